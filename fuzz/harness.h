// What the fuzz targets share: a context whose text is caught, and options from the input.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "cli/layouts.h"
#include "cli/message_hook.h"
#include "cli/tool_table.h"
#include "runtime/context.h"
#include "runtime/flags.h"
#include "runtime/print.h"
#include "runtime/runtime_private.h"
#include "runtime/trap.h"

namespace zxqtlv::fuzz {

// Ends the run as a finding.
inline void require(bool holds, const char* rule) {
    if (!holds) {
        std::fprintf(stderr, "broken: %s\n", rule);
        std::abort();
    }
}

// A context as the program has it, whose text goes into a string.
class CatchingContext {
  public:
    CatchingContext() {
        require(zxqinit(&context_, &toolTable()) == 0, "a context can be initialised");
        context_.runtimePrivate->vprintHook = &catchText;
        kxSetMessageHook(&context_, &printMessage);
        context_.flags |= TrapEnabled | TraceFixes;
        caught_.clear();
    }
    ~CatchingContext() { zxqterm(&context_); }
    CatchingContext(const CatchingContext&) = delete;
    CatchingContext& operator=(const CatchingContext&) = delete;

    ZxqGlobal& get() { return context_; }
    const std::string& text() {
        printBlock(context_).handOver();
        return caught_;
    }

  private:
    static int catchText(ZxqGlobal* /*context*/, const char* format, std::va_list arguments) {
        if (std::string_view(format) == "%s") {
            caught_ += va_arg(arguments, const char*);
            return 0;
        }
        char piece[4096];
        caught_.append(piece, static_cast<std::size_t>(
                                  std::vsnprintf(piece, sizeof piece, format, arguments)));
        return 0;
    }

    static inline std::string caught_;
    ZxqGlobal context_{};
};

struct Options {
    TlvFormat format = TlvFormat::Hexadecimal;
    std::uint32_t flags = 0;
    std::uint32_t padSetting = 0;
    std::size_t filler = 0;  // characters printed before the listing, to move its blocks
};

// The options that the first three octets of the input choose; these are taken off.
inline Options takeOptions(const std::uint8_t*& data, std::size_t& size) {
    Options options;
    if (size < 3) {
        size = 0;
        return options;
    }
    options.format = static_cast<TlvFormat>(1 + data[0] % 3);
    options.flags = (data[0] & 0x10 ? NoShort : 0U) | (data[0] & 0x20 ? NoAddition : 0U) |
                    (data[0] & 0x40 ? NoTitles : 0U);
    options.padSetting = (data[0] & 0x80) != 0 ? data[1] + 1U : 0U;
    options.filler = data[2] * 257U;
    data += 3;
    size -= 3;
    return options;
}

struct Listing {
    std::int32_t status;
    std::string text;
};

// Lists a copy of the octets, so that a read outside of them is found.
inline Listing list(const std::uint8_t* data, std::size_t size, const Options& options) {
    CatchingContext context;
    context.get().flags |= options.flags;
    context.get().padSetting = options.padSetting;
    printBlock(context.get()).appendBlanks(options.filler);
    std::vector<std::uint8_t> octets(data, data + size);
    octets.shrink_to_fit();
    EncodedBuffer buffer{static_cast<std::int32_t>(size), octets.data()};
    std::int32_t status = 0;
    {
        TrapGuard guard(context.get(), GuardKind::Driver);
        status = guard.run([&] { printLayout(context.get(), options.format, buffer); });
    }
    return {status, context.text().substr(options.filler)};
}

}  // namespace zxqtlv::fuzz
