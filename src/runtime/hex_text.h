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

// The numbers from 0 to 99 as two digits each.
inline constexpr auto kDecimalPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t number = 0; number < 100; ++number) {
        pairs[2 * number] = static_cast<char>('0' + number / 10);
        pairs[2 * number + 1] = static_cast<char>('0' + number % 10);
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
    // Nearly every number of a listing has one or two digits.
    if (value >= 0 && value < 10) {
        *out = static_cast<char>('0' + value);
        return out + 1;
    }
    if (value >= 0 && value < 100) {
        std::memcpy(out, &kDecimalPairs[2 * static_cast<std::size_t>(value)], 2);
        return out + 2;
    }
    return std::to_chars(out, out + 20, value).ptr;
}

// Decimal digits of a number from 0, with blanks in front up to `width` (at most 8) characters.
inline char* writePadded(char* out, std::int64_t value, std::size_t width) {
    if (value < 100) {
        std::memset(out, ' ', 8);
        char* const end = out + width;
        std::memcpy(end - 2, &kDecimalPairs[2 * static_cast<std::size_t>(value)], 2);
        if (value < 10) {
            end[-2] = ' ';
        }
        return end;
    }
    char digits[20];
    const auto count = static_cast<std::size_t>(writeDecimal(digits, value) - digits);
    const std::size_t blanks = count < width ? width - count : 0;
    std::memset(out, ' ', 8);
    std::memcpy(out + blanks, digits, sizeof digits);
    return out + blanks + count;
}

// Lower-case hexadecimal digits without leading zeros; at most 8 characters.
inline char* writeLowerHex(char* out, std::uint32_t value) {
    return std::to_chars(out, out + 8, value, 16).ptr;
}

// A text whose length the compiler knows.
template <std::size_t Size>
char* writeText(char* out, const char (&text)[Size]) {
    std::memcpy(out, text, Size - 1);
    return out + Size - 1;
}

}  // namespace zxqtlv
