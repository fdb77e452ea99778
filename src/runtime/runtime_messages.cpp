#include "runtime/runtime_messages.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <utility>

#include "runtime/flags.h"
#include "runtime/hex_dump.h"
#include "runtime/memory.h"
#include "runtime/print.h"
#include "runtime/runtime_message_table.h"
#include "runtime/runtime_private.h"

namespace zxqtlv {
namespace {

constexpr std::size_t kEndSize = 3;  // ".\n" and its terminator

struct ReturnCodeText {
    std::uint32_t code;
    const char* text;
};

constexpr std::array<ReturnCodeText, 14> kReturnCodeTexts{{
    {0, "Success"},
    {8, "Out of memory"},
    {27, "Unable to open trace file"},
    {30, "ASN.1 type is not supported"},
    {31, "Real code was not linked"},
    {32, "Parameter value range error"},
    {46, "Unable to close trace file"},
    {47, "Error in iconv() call"},
    {48, "Type constraint violated"},
    {49, "Table constraint violated"},
    {50, "Presence constraint violated"},
    {52, "Absence constraint violated"},
    {53, "Pattern constraint violated"},
    {1, "User-provided output buffer is too small"},
}};

// The detail as text, cut to `room` characters; returns the characters written.
std::size_t writeDetail(char* out, std::size_t room, DetailKind kind, const void* detail) {
    if (detail == nullptr) {
        return 0;
    }
    int written = 0;
    switch (kind) {
        case DetailKind::Long:
            written = std::snprintf(out, room, "%ld", *static_cast<const long*>(detail));
            break;
        case DetailKind::Double:
            written = std::snprintf(out, room, "%f", *static_cast<const double*>(detail));
            break;
        case DetailKind::Text:
            written = std::snprintf(out, room, "'%s'", static_cast<const char*>(detail));
            break;
        case DetailKind::None:
        case DetailKind::Size:
            break;
    }
    return std::min(static_cast<std::size_t>(std::max(written, 0)), room - 1);
}

bool isPrinted(const ZxqGlobal& context, char operation) {
    return (operation == 'E' && (context.encodingFlags & PrintMessages) != 0) ||
           (operation == 'D' && (context.decodingFlags & PrintMessages) != 0) ||
           (zxqGetTraceLevel(&context) & kTraceMessages) != 0;
}

}  // namespace

std::int32_t zxqRuntimeError(ZxqGlobal* context, char* buffer, std::uint32_t entry, char operation,
                             const void* detail) {
    if (context == nullptr || context->runtimePrivate == nullptr || buffer == nullptr) {
        return kNullArgument;
    }
    contextRelease(*context, std::exchange(context->runtimePrivate->scratchBlock, nullptr));
    const RuntimeMessage& message = runtimeMessage(entry);
    const std::size_t textSize = std::strlen(message.text);
    buffer[0] = operation;
    std::memcpy(buffer + 1, message.text, textSize);
    std::size_t size = 1 + textSize;
    size += writeDetail(buffer + size, kMessageBufferSize - kEndSize - size + 1, message.detail,
                        detail);
    std::memcpy(buffer + size, ".\n", kEndSize);
    if (isPrinted(*context, operation)) {
        zxqprint(context, "%s", buffer);
    }
    return message.returnCode;
}

const char* zxqDescribeReturnCode(std::uint32_t code) {
    const auto* const row =
        std::find_if(kReturnCodeTexts.begin(), kReturnCodeTexts.end(),
                     [code](const ReturnCodeText& candidate) { return candidate.code == code; });
    return row != kReturnCodeTexts.end() ? row->text : "Unknown return code";
}

std::uint32_t zxqGetTraceLevel(const ZxqGlobal* context) {
    return context == nullptr || context->runtimePrivate == nullptr
               ? ~0U
               : context->runtimePrivate->traceLevel;
}

}  // namespace zxqtlv
