// Placeholders of a message text, filled in.
//
// For: "%s", "%ld" and "%#x", the only ones that the message tables use.
// Not for: widths, flags or any other conversion; these stand as they are.
//
//     appendMessage(out, "length, %ld (%#x)", {{5, 5}});  // "length, 5 (0x5)"
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "runtime/print_block.h"

namespace zxqtlv {

// A text, or a number where the view is null. Converts implicitly, so that lists of arguments read
// as in a call of `printf`.
struct MessageArgument {
    MessageArgument(std::string_view value) : text(value) {}  // NOLINT(google-explicit-constructor)
    MessageArgument(std::int64_t value) : number(value) {}    // NOLINT(google-explicit-constructor)

    std::string_view text;
    std::int64_t number = 0;
};

// Appends the text with its placeholders filled in order. A number stands for any placeholder; a
// placeholder without an argument prints nothing.
void appendMessage(PrintBlock& out, std::string_view text,
                   std::initializer_list<MessageArgument> arguments);

}  // namespace zxqtlv
