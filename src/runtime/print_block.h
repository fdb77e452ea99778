// The block in which listing text is composed before it is printed.
//
// For: plain appends of characters, blanks, digits and octets. A system call for each piece would
// cost many times the piece itself, so text waits here and leaves as one `zxqprint` of the block.
// Not for: deciding when text must be out; `zxqprint`, trace files, guards and the end of a
// listing hand the block over, so text never overtakes other text of the same context.
//
//     PrintBlock& out = printBlock(context);
//     out.startRow();
//     out.append("30 ");
//     out.column();  // 3
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "runtime/hex_text.h"

namespace zxqtlv {

struct ZxqGlobal;

class PrintBlock {
  public:
    // Fits the caches, and makes the parts of pages at both ends of a write rare.
    static constexpr std::size_t kCapacity = 512 * 1024;

    // The context whose `zxqprint` takes the text; set once, before the first append.
    void bind(ZxqGlobal* owner) { owner_ = owner; }

    bool empty() const { return size_ == 0; }

    // Prints what waits, with one `zxqprint`, and starts over empty.
    void handOver();

    // Room for `count` (at most kCapacity) characters; what was written counts after `commit`.
    char* reserve(std::size_t count) {
        if (kCapacity - size_ < count) {
            handOver();
        }
        return text_.data() + size_;
    }
    void commit(const char* end) { size_ = static_cast<std::size_t>(end - text_.data()); }

    void append(char character) {
        char* out = reserve(1);
        *out = character;
        commit(out + 1);
    }
    // Any length. Characters only: a NUL would end the print of the whole block.
    void append(std::string_view text) {
        if (text.size() > kShort) {
            appendLong(text);
            return;
        }
        char* out = reserve(text.size());
        std::memcpy(out, text.data(), text.size());
        commit(out + text.size());
    }
    void appendBlanks(std::size_t count) {
        if (count > kFew) {
            appendManyBlanks(count);
            return;
        }
        char* out = reserve(kFew);
        std::memset(out, ' ', kFew);  // a fixed number costs less than a call for the right one
        commit(out + count);
    }
    // Ends the line before and starts a row. Returns room for `count` (less than kCapacity)
    // characters; what was written counts after `commit`.
    char* startLine(std::size_t count) {
        char* out = reserve(1 + count);
        *out++ = '\n';
        rowStart_ = handedOver_ + size_ + 1;
        return out;
    }
    // Ends the line before and starts a row with `blanks` blanks. Returns room for `count` (less
    // than kCapacity - kFew) characters behind them; what was written counts after `commit`.
    char* startLine(std::size_t blanks, std::size_t count) {
        if (blanks > kFew) {
            return startDeepLine(blanks, count);
        }
        char* out = reserve(1 + kFew + count);
        *out++ = '\n';
        rowStart_ = handedOver_ + size_ + 1;
        std::memset(out, ' ', kFew);
        return out + blanks;
    }
    // Two upper-case digits for each of `count` octets.
    void appendHex(const std::uint8_t* octets, std::size_t count) {
        if (count > kShort) {
            appendLongHex(octets, count);
            return;
        }
        commit(writeHexPairs(reserve(2 * count), octets, count));
    }
    void appendDecimal(std::int64_t value) { commit(writeDecimal(reserve(kNumberRoom), value)); }
    void appendLowerHex(std::uint32_t value) { commit(writeLowerHex(reserve(8), value)); }

    // A row starts at the next character: the column counts from here.
    void startRow() { rowStart_ = handedOver_ + size_; }
    // The row goes on at `column`: what was printed since it was there does not count.
    void resumeRow(std::size_t column) { rowStart_ = handedOver_ + size_ - column; }
    // Characters since the row started.
    std::size_t column() const { return handedOver_ + size_ - rowStart_; }
    // The same at `end`, in room that was reserved and not committed yet.
    std::size_t columnAt(const char* end) const {
        return handedOver_ + static_cast<std::size_t>(end - text_.data()) - rowStart_;
    }

  private:
    static constexpr std::size_t kShort = 256;
    static constexpr std::size_t kFew = 64;

    char* startDeepLine(std::size_t blanks, std::size_t count);
    void appendManyBlanks(std::size_t count);
    void appendLong(std::string_view text);
    void appendLongHex(const std::uint8_t* octets, std::size_t count);

    ZxqGlobal* owner_ = nullptr;
    std::size_t size_ = 0;        // characters that wait
    std::size_t handedOver_ = 0;  // characters printed so far
    std::size_t rowStart_ = 0;    // counted like handedOver_ + size_
    std::array<char, kCapacity + 1> text_;
};

}  // namespace zxqtlv
