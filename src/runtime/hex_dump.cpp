#include "runtime/hex_dump.h"

#include <algorithm>
#include <string_view>

#include "runtime/print.h"
#include "runtime/runtime_private.h"

namespace zxqtlv {
namespace {

constexpr std::int32_t kPlainLine = 32;      // octets
constexpr std::int32_t kPlainGroup = 4;      // octets
constexpr std::int32_t kAnnotatedLine = 16;  // octets

void printPlain(PrintBlock& out, const std::uint8_t* data, std::int32_t length) {
    for (std::int32_t i = 1; i <= length; ++i) {
        out.appendHex(data + i - 1, 1);
        if (i % kPlainLine == 0) {
            out.append('\n');
        } else if (i % kPlainGroup == 0) {
            out.append(' ');  // also behind the last octet of all
        }
    }
    if (length % kPlainLine != 0) {
        out.append('\n');
    }
}

void printOffset(PrintBlock& out, std::int32_t offset) {
    char digits[8];
    const auto size = static_cast<std::size_t>(
        writeLowerHex(digits, static_cast<std::uint32_t>(offset)) - digits);
    constexpr std::string_view kZeros = "000000";
    out.append("#   ");
    out.append(kZeros.substr(std::min(size, kZeros.size())));
    out.append(std::string_view(digits, size));
    out.append(":   ");
}

// One line of up to 16 octets, its characters in a column of their own.
void printAnnotatedLine(PrintBlock& out, const std::uint8_t* octets, std::int32_t count) {
    for (std::int32_t i = 1; i <= count; ++i) {
        out.appendHex(octets + i - 1, 1);
        if (i % 2 == 0 && i < count) {
            out.append(' ');
        }
    }
    if (count == kAnnotatedLine) {
        out.append("    ");
    } else {
        const auto missing = static_cast<std::size_t>(kAnnotatedLine - count);
        out.appendBlanks(missing / 2 + 2 * missing + 3);
        out.append(' ');
    }
    for (std::int32_t i = 0; i < count; ++i) {
        const auto character = static_cast<char>(octets[i]);
        out.append(character >= ' ' && character <= '~' ? character : '.');
    }
    out.append('\n');
}

}  // namespace

void zxqPrintOctets(ZxqGlobal* context, const std::uint8_t* data, std::int32_t length) {
    if (context == nullptr || context->runtimePrivate == nullptr || data == nullptr) {
        return;
    }
    PrintBlock& out = printBlock(*context);
    if ((context->runtimePrivate->traceLevel & kTraceAnnotated) == 0) {
        printPlain(out, data, std::max(length, 0));
        return;
    }
    for (std::int32_t offset = 0; offset < length; offset += kAnnotatedLine) {
        printOffset(out, offset);
        printAnnotatedLine(out, data + offset, std::min(kAnnotatedLine, length - offset));
    }
}

std::int32_t zxqEnableTrace(ZxqGlobal* context, std::uint32_t level) {
    if (context == nullptr || context->runtimePrivate == nullptr) {
        return kNullArgument;
    }
    context->runtimePrivate->traceLevel = level;
    context->runtimePrivate->dumpFunction = level != 0 ? &zxqPrintOctets : nullptr;
    return kSuccess;
}

void traceEncoding(ZxqGlobal& context, const std::uint8_t* data, std::int32_t length) {
    const RuntimePrivate& state = *context.runtimePrivate;
    if (state.traceLevel != 0 && state.dumpFunction != nullptr) {
        PrintBlock& out = printBlock(context);
        const std::size_t column = out.column();
        state.dumpFunction(&context, data, length);
        out.resumeRow(column);
    }
}

}  // namespace zxqtlv
