// Memory through a context's own functions.
//
// For: single blocks with an owner (`ContextBlock`) and growing arrays for work in progress
// (`WorkArray`). A work array is entered in a list of the context, so that a guard that a signal
// jumps to can give its memory back although no destructor ran.
// Not for: zero-filling or reporting; a failure is a null pointer or false, and the caller raises.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "runtime/context.h"

namespace zxqtlv {

// Octets from the context's allocate function, or null when it has none left or the context's
// allocation limit forbids the size. `contextRelease` takes null too.
void* contextAllocate(ZxqGlobal& context, std::size_t octets);
void contextRelease(ZxqGlobal& context, void* block);

// Stands in front of every block of work in progress.
struct alignas(std::max_align_t) WorkHeader {
    WorkHeader* newer;
    WorkHeader* older;
};

// Like `contextAllocate`, entered in the context's list of work in progress.
void* workAllocate(ZxqGlobal& context, std::size_t octets);
void workRelease(ZxqGlobal& context, void* block);

// The newest block of work, as a mark for `releaseWorkSince`, which releases all newer ones.
WorkHeader* newestWork(const ZxqGlobal& context);
void releaseWorkSince(ZxqGlobal& context, const WorkHeader* mark);

// Owns one block; moves, does not copy.
class ContextBlock {
  public:
    ContextBlock() = default;
    // `octets` of uninitialised memory; empty when there is none.
    ContextBlock(ZxqGlobal& context, std::size_t octets)
        : context_(&context), data_(static_cast<std::uint8_t*>(contextAllocate(context, octets))) {}
    ~ContextBlock() { reset(); }
    ContextBlock(ContextBlock&& other) noexcept
        : context_(other.context_), data_(std::exchange(other.data_, nullptr)) {}
    ContextBlock& operator=(ContextBlock&& other) noexcept {
        if (this != &other) {
            reset();
            context_ = other.context_;
            data_ = std::exchange(other.data_, nullptr);
        }
        return *this;
    }
    ContextBlock(const ContextBlock&) = delete;
    ContextBlock& operator=(const ContextBlock&) = delete;

    std::uint8_t* data() const { return data_; }
    explicit operator bool() const { return data_ != nullptr; }
    void reset() {
        if (data_ != nullptr) {
            contextRelease(*context_, std::exchange(data_, nullptr));
        }
    }

  private:
    ZxqGlobal* context_ = nullptr;
    std::uint8_t* data_ = nullptr;
};

// A growing array of plain records, used as a stack or a list while some work is in progress.
template <typename Record>
class WorkArray {
    static_assert(std::is_trivially_copyable_v<Record>);

  public:
    explicit WorkArray(ZxqGlobal& context) : context_(context) {}
    ~WorkArray() { workRelease(context_, data_); }
    WorkArray(const WorkArray&) = delete;
    WorkArray& operator=(const WorkArray&) = delete;

    // False when memory is exhausted; the array is then as it was.
    [[nodiscard]] bool push(const Record& record) {
        if (size_ == capacity_ && !grow()) {
            return false;
        }
        data_[size_++] = record;
        return true;
    }
    void pop() { --size_; }
    void truncate(std::size_t size) { size_ = size; }

    bool empty() const { return size_ == 0; }
    std::size_t size() const { return size_; }
    Record& back() { return data_[size_ - 1]; }
    const Record& back() const { return data_[size_ - 1]; }
    Record& operator[](std::size_t index) { return data_[index]; }
    const Record& operator[](std::size_t index) const { return data_[index]; }

  private:
    bool grow() {
        const std::size_t capacity = capacity_ == 0 ? 64 : capacity_ * 2;
        auto* const data = static_cast<Record*>(workAllocate(context_, capacity * sizeof(Record)));
        if (data == nullptr) {
            return false;
        }
        if (size_ != 0) {
            std::memcpy(data, data_, size_ * sizeof(Record));
        }
        workRelease(context_, data_);
        data_ = data;
        capacity_ = capacity;
        return true;
    }

    ZxqGlobal& context_;
    Record* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace zxqtlv
