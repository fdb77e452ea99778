// Text of hexadecimal digits, converted to octets.
//
// For: the conversion, and the whitespace that text input may hold.
// Not for: files or slices (cli/loader.h).
//
//     "30 03 0" -> 30 03 00
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zxqtlv {

// Tab, line feed, vertical tab, form feed, carriage return or space.
constexpr bool isWhitespace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

struct HexConversion {
    std::size_t octets;  // written
    bool clean;          // false: a character that is neither digit nor whitespace ended it
};

// Writes the octets that `text` spells to `out`, which has room for half its length, rounded up.
// A digit alone at the end is a high nibble. The conversion ends at a foreign character; one in
// second place still completes its octet, as a 0, when another octet stands before it.
HexConversion convertHexText(std::string_view text, std::uint8_t* out);

}  // namespace zxqtlv
