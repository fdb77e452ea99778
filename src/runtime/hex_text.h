// Octets and numbers as digits, written straight into a caller's characters.
//
// For: the writers of hot text; each takes where to write and returns where it stopped.
// Not for: checking room; the caller has reserved it. Nothing is terminated.
//
//     char text[4];
//     char* end = writeHexPairs(text, octets, 2);  // "3082"
#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zxqtlv {

inline constexpr char kUpperHexDigits[] = "0123456789ABCDEF";

// Both digits of each octet value, so that an octet costs one look-up and one two-character copy.
inline constexpr auto kHexPairs = [] {
    std::array<char, 512> pairs{};
    for (std::size_t octet = 0; octet < 256; ++octet) {
        pairs[2 * octet] = kUpperHexDigits[octet >> 4];
        pairs[2 * octet + 1] = kUpperHexDigits[octet & 15];
    }
    return pairs;
}();

// Two upper-case digits.
inline char* writeHexPair(char* out, std::uint8_t octet) {
    std::memcpy(out, &kHexPairs[2U * octet], 2);
    return out + 2;
}

// Two upper-case digits for each of `count` octets, without separators.
inline char* writeHexPairs(char* out, const std::uint8_t* octets, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        out = writeHexPair(out, octets[i]);
    }
    return out;
}

// Decimal digits with a sign where negative; at most 20 characters.
inline char* writeDecimal(char* out, std::int64_t value) {
    if (value >= 0 && value < 10) {
        *out = static_cast<char>('0' + value);
        return out + 1;
    }
    return std::to_chars(out, out + 20, value).ptr;
}

// Lower-case hexadecimal digits without leading zeros; at most 8 characters.
inline char* writeLowerHex(char* out, std::uint32_t value) {
    return std::to_chars(out, out + 8, value, 16).ptr;
}

}  // namespace zxqtlv
