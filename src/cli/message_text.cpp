#include "cli/message_text.h"

#include <array>

namespace zxqtlv {
namespace {

enum class Placeholder { Text, Decimal, Hexadecimal };

struct Conversion {
    std::string_view spelling;
    Placeholder kind;
};

constexpr std::array<Conversion, 3> kConversions{{
    {"%s", Placeholder::Text},
    {"%ld", Placeholder::Decimal},
    {"%#x", Placeholder::Hexadecimal},
}};

void appendArgument(PrintBlock& out, Placeholder kind, const MessageArgument& argument) {
    if (argument.text.data() != nullptr) {
        out.append(argument.text);
    } else if (kind != Placeholder::Hexadecimal) {
        out.appendDecimal(argument.number);
    } else {
        // As C prints it: no "0x" in front of a zero.
        out.append(argument.number != 0 ? "0x" : "");
        out.appendLowerHex(static_cast<std::uint32_t>(argument.number));
    }
}

}  // namespace

void appendMessage(PrintBlock& out, std::string_view text,
                   std::initializer_list<MessageArgument> arguments) {
    const MessageArgument* next = arguments.begin();
    while (!text.empty()) {
        const std::size_t plain = text.find('%');
        out.append(text.substr(0, plain));
        if (plain == std::string_view::npos) {
            return;
        }
        text.remove_prefix(plain);
        std::size_t taken = 1;
        for (const Conversion& conversion : kConversions) {
            if (text.starts_with(conversion.spelling)) {
                taken = conversion.spelling.size();
                if (next != arguments.end()) {
                    appendArgument(out, conversion.kind, *next++);
                }
            }
        }
        out.append(taken == 1 ? "%" : "");
        text.remove_prefix(taken);
    }
}

}  // namespace zxqtlv
