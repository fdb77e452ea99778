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
    std::memcpy(out, &kHexPairs[2 * std::size_t{octet}], 2);
    return out + 2;
}

// Two upper-case digits for each of `count` octets, without separators.
inline char* writeHexPairs(char* out, const std::uint8_t* octets, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        writeHexPair(out + 2 * i, octets[i]);
    }
    return out + 2 * count;
}

inline constexpr std::size_t kNumberRoom = 20;  // characters of the longest number

inline char* writeTwoDigits(char* out, std::uint32_t value) {
    std::memcpy(out, &kDecimalPairs[2 * std::size_t{value}], 2);
    return out + 2;
}

// Decimal digits of a number from 0; at most kNumberRoom characters. The small numbers that a
// listing is full of take one or two steps.
inline char* writeUnsigned(char* out, std::uint64_t value) {
    if (value < 10) {
        *out = static_cast<char>('0' + value);
        return out + 1;
    }
    if (value < 100) {
        return writeTwoDigits(out, static_cast<std::uint32_t>(value));
    }
    if (value < 10000) {
        const auto number = static_cast<std::uint32_t>(value);
        return writeTwoDigits(writeUnsigned(out, number / 100), number % 100);
    }
    const auto low = static_cast<std::uint32_t>(value % 10000);
    out = writeUnsigned(out, value / 10000);
    return writeTwoDigits(writeTwoDigits(out, low / 100), low % 100);
}

// Decimal digits with a sign where negative; at most kNumberRoom characters.
inline char* writeDecimal(char* out, std::int64_t value) {
    if (value < 0) {
        *out++ = '-';
        return writeUnsigned(out, -static_cast<std::uint64_t>(value));
    }
    return writeUnsigned(out, static_cast<std::uint64_t>(value));
}

// The numbers from 0 to 999 with blanks in front, four characters each.
inline constexpr auto kPaddedNumbers = [] {
    std::array<char, 4000> numbers{};
    for (std::size_t number = 0; number < 1000; ++number) {
        std::size_t place = 4 * number + 4;
        std::size_t rest = number;
        do {
            numbers[--place] = static_cast<char>('0' + rest % 10);
            rest /= 10;
        } while (rest != 0);
        while (place > 4 * number) {
            numbers[--place] = ' ';
        }
    }
    return numbers;
}();

// Decimal digits of a number from 0, with blanks in front up to `Width` (1 to 4) characters; at
// most kNumberRoom characters. A number that fits is one copy, however many digits it has.
template <std::size_t Width>
char* writePadded(char* out, std::int64_t value) {
    static_assert(Width >= 1 && Width <= 4);
    constexpr std::array<std::uint64_t, 5> kLimits{0, 10, 100, 1000, 1000};
    const auto number = static_cast<std::uint64_t>(value);
    if (number < kLimits[Width]) {
        std::memcpy(out, &kPaddedNumbers[4 * number + 4 - Width], Width);
        return out + Width;
    }
    return writeUnsigned(out, number);
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
