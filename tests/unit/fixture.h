// A context whose printed text, raised messages and memory a test can look at.
#pragma once

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "runtime/context.h"
#include "runtime/control_table.h"
#include "runtime/print.h"
#include "runtime/runtime_private.h"

namespace zxqtlv::test {

// While it lives, new contexts use counted memory; then the process defaults are as before.
class CountedDefaults {
  public:
    CountedDefaults() : saved_(std::exchange(processDefaults(), {&allocate, &release})) {
        blocks = 0;
        left = -1;
        refused = 0;
    }
    ~CountedDefaults() { processDefaults() = saved_; }

    static void* allocate(std::size_t octets) {
        if (left == 0) {
            ++refused;
            return nullptr;
        }
        left -= left > 0 ? 1 : 0;
        ++blocks;
        return std::malloc(octets);
    }
    static void release(void* block) {
        blocks -= block != nullptr ? 1 : 0;
        std::free(block);
    }

    static inline int blocks = 0;  // not released yet
    static inline int refused = 0;
    static inline int left = -1;  // allocations that still succeed; negative for any number

  private:
    const ProcessDefaults saved_;
};

inline const std::uint8_t* octetsOf(const std::string& text) {
    return reinterpret_cast<const std::uint8_t*>(text.data());
}

struct Message {
    std::uint32_t code;
    std::uintptr_t detail1;
    std::int32_t detail2;
    bool operator==(const Message&) const = default;
};

class TestContext : CountedDefaults {
  public:
    TestContext() {
        text_.clear();
        messages_.clear();
        EXPECT_EQ(zxqinit(&global, &table_), kSuccess);
        global.runtimePrivate->vprintHook = &capture;
        kxSetMessageHook(&global, &record);
    }
    ~TestContext() {
        zxqterm(&global);
        EXPECT_EQ(blocks, 0);
    }

    // What was printed since the last call, the text that waits included.
    std::string takeText() {
        printBlock(global).handOver();
        return std::exchange(text_, {});
    }
    // What reached the message hook since the last call.
    static std::vector<Message> takeMessages() { return std::exchange(messages_, {}); }

    ZxqGlobal global{};

  private:
    static std::uint32_t record(ZxqGlobal* /*context*/, std::uint32_t code, std::uintptr_t detail1,
                                std::int32_t detail2) {
        messages_.push_back({code, detail1, detail2});
        return code;
    }
    static int capture(ZxqGlobal* /*context*/, const char* format, std::va_list arguments) {
        char* piece = nullptr;
        const int length = vasprintf(&piece, format, arguments);
        text_.append(piece, static_cast<std::size_t>(length));
        std::free(piece);
        return length;
    }

    static inline std::string text_;
    static inline std::vector<Message> messages_;
    const ControlTable table_{nullptr, nullptr, kControlTableVersion, 0};
};

}  // namespace zxqtlv::test
