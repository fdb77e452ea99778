#include "cli/message_hook.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "cli/message_text.h"
#include "runtime/flags.h"
#include "runtime/kx_messages.h"
#include "runtime/print.h"
#include "runtime/runtime_private.h"

namespace zxqtlv {
namespace {

constexpr std::size_t kLongestDetail = 72;  // characters of a detail text that are shown
constexpr std::size_t kLongestInline = 30;  // a longer detail stands on a line of its own
constexpr std::int64_t kDumpOctets = 38;    // 76 digits, a line

struct Details {
    std::uintptr_t first;
    std::int32_t second;

    bool absent() const { return first == 0 && second == 0; }
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the word carries a pointer for these codes
    const char* text() const { return reinterpret_cast<const char*>(first); }
    std::int64_t number() const { return static_cast<std::int32_t>(first); }
};

bool isMisencoding(std::uint32_t code) {
    return code == kPrematureEnd || code == kContentsMisencoded || code == kBadTagIndex ||
           (code >= kLengthTooLong && code <= kHeaderTooLong) || code == kTagOfZero;
}

// Their texts end where the next line starts with a line feed of its own.
bool endsItsLine(std::uint32_t code) {
    return code == kEocNotFound || code == kEocSecondOctet || code == kTagOfZero;
}

// The octets from the place of the fault, the first detail, to the end of the buffer being walked,
// as far as a line holds them.
void printInvalidRecord(ZxqGlobal& context, PrintBlock& out, const Details& details) {
    const RuntimePrivate& state = *context.runtimePrivate;
    if (details.second == 0 || state.currentBuffer == nullptr ||
        state.currentBuffer->start == nullptr) {
        return;
    }
    const CurrentBuffer& buffer = *state.currentBuffer;
    const auto start = reinterpret_cast<std::uintptr_t>(buffer.start);
    if (details.first <= start ||
        details.first >= start + static_cast<std::uintptr_t>(buffer.length)) {
        return;
    }
    const auto distance = static_cast<std::int64_t>(details.first - start);
    const std::int64_t walked = std::int64_t{buffer.length} - state.stopPoint;
    const std::int64_t wanted = distance < walked ? walked - distance : details.second;
    const std::int64_t count = std::min(wanted, buffer.length - distance);
    if (count <= 0) {
        return;
    }
    out.append(" Last invalid record is:\n");
    out.appendHex(buffer.start + distance, static_cast<std::size_t>(std::min(count, kDumpOctets)));
    if (count > kDumpOctets) {
        out.append("...");
    }
}

// A detail text of `length` characters, or NUL-terminated when that is 0.
std::string_view detailText(const Details& details) {
    return details.second > 0
               ? std::string_view(
                     details.text(),
                     ::strnlen(details.text(), static_cast<std::size_t>(details.second)))
               : std::string_view(details.text());
}

void printShortened(PrintBlock& out, std::string_view text, std::uint32_t code,
                    const Details& details) {
    const std::string_view whole = detailText(details);
    const bool ownLine =
        whole.size() > kLongestInline || code == kControlCharacter || code == kMissingTypeReference;
    char shown[1 + kLongestDetail] = {'\n'};
    const std::size_t size = whole.copy(shown + 1, kLongestDetail);
    const std::string_view detail(shown, 1 + size);
    appendMessage(out, text, {detail.substr(ownLine ? 0 : 1)});
}

// "name#value": a component's name and the value text in which it is missing.
void printMissing(PrintBlock& out, std::string_view text, const Details& details) {
    const std::string_view whole = detailText(details);
    const std::size_t mark = std::min(whole.find('#'), whole.size());
    const std::string_view name = whole.substr(0, std::min(mark, kLongestDetail));
    std::string_view value = whole.substr(std::min(mark + 1, whole.size()));
    if (value.starts_with('\n')) {
        value.remove_prefix(1);
    }
    char shown[1 + kLongestDetail] = {'\n'};
    const std::size_t size = value.copy(shown + 1, kLongestDetail);
    const std::string_view quote = name.empty() ? "" : "'";
    appendMessage(out, text,
                  {quote, name, name.empty() ? std::string_view("") : std::string_view("' "),
                   size == 0 ? std::string_view(".") : std::string_view(": "),
                   size == 0 ? std::string_view("") : std::string_view(shown, 1 + size)});
}

// The detail of an encoding error is a message of its own, with a prefix.
void printEncodingError(PrintBlock& out, std::string_view text, const Details& details) {
    const std::string_view whole(details.text());
    const std::string_view detail = whole.substr(std::min(whole.size(), kKxPrefix));
    appendMessage(out, text, {detail.empty() ? std::string_view("\n") : detail});
}

void printDetailed(ZxqGlobal& context, PrintBlock& out, std::uint32_t code, std::string_view text,
                   const Details& details) {
    if (details.first == 0) {
        const std::int64_t number = details.second;
        appendMessage(out, text, {number});
        return;
    }
    const std::int64_t first = details.number();
    const std::int64_t second = details.second;
    switch (code) {
        case kLengthTooLong:
            appendMessage(out, text, {first, first, second, second, second});
            break;
        case kHeaderTooLong:
            appendMessage(out, text, {first, first, second, second});
            break;
        case kPrematureEnd:
            out.append(text);
            printInvalidRecord(context, out, details);
            break;
        case kConstraintViolation:
            appendMessage(out, text, {std::string_view(details.text())});
            break;
        case kMissingComponent:
        case kMissingIdentifier:
            printMissing(out, text, details);
            break;
        default:
            printShortened(out, text, code, details);
            break;
    }
}

}  // namespace

std::uint32_t printMessage(ZxqGlobal* context, std::uint32_t code, std::uintptr_t detail1,
                           std::int32_t detail2) {
    const Details details{detail1, detail2};
    const char* const chosen = details.absent() ? kxMessageBrief(code) : kxMessageDetailed(code);
    if (chosen == nullptr) {
        return code;
    }
    std::string_view text(chosen);
    if ((context->flags & TrapEnabled) != 0) {
        text.remove_prefix(kKxPrefix);
    }
    PrintBlock& out = printBlock(*context);
    if (isMisencoding(code)) {
        out.append('\n');
    }
    if (code == kEncodingError && detail1 != 0) {
        printEncodingError(out, text, details);
        return code;
    }
    if (details.absent()) {
        out.append(text);
    } else {
        printDetailed(*context, out, code, text, details);
    }
    if (!endsItsLine(code)) {
        out.append('\n');
    }
    return code;
}

}  // namespace zxqtlv
