#include "cli/hex_input.h"

#include <array>
#include <optional>

namespace zxqtlv {
namespace {

constexpr std::uint8_t kForeign = 0xFF;

constexpr auto kDigitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(kForeign);
    for (std::uint8_t digit = 0; digit < 10; ++digit) {
        values[static_cast<std::size_t>('0' + digit)] = digit;
    }
    for (std::uint8_t digit = 10; digit < 16; ++digit) {
        values[static_cast<std::size_t>('A' + digit - 10)] = digit;
        values[static_cast<std::size_t>('a' + digit - 10)] = digit;
    }
    return values;
}();

// The value of the next significant character, kForeign for one that is no digit; none at the end.
std::optional<std::uint8_t> nextDigit(std::string_view& text) {
    while (!text.empty()) {
        const char character = text.front();
        text.remove_prefix(1);
        if (!isWhitespace(character)) {
            return kDigitValues[static_cast<std::uint8_t>(character)];
        }
    }
    return std::nullopt;
}

}  // namespace

HexConversion convertHexText(std::string_view text, std::uint8_t* out) {
    std::size_t octets = 0;
    while (const std::optional<std::uint8_t> high = nextDigit(text)) {
        if (*high == kForeign) {
            return {octets, false};
        }
        const std::optional<std::uint8_t> low = nextDigit(text);
        const bool foreign = low == kForeign;
        if (foreign && octets == 0) {
            return {0, false};
        }
        const int nibble = foreign ? 0 : low.value_or(std::uint8_t{0});
        out[octets++] = static_cast<std::uint8_t>((*high << 4) | nibble);
        if (foreign) {
            return {octets, false};
        }
    }
    return {octets, true};
}

}  // namespace zxqtlv
