// INTEGER and REAL values as text.
//
// For: pure writers of decoded numbers.
// Not for: decoding (codec/).
//
//     5 -> "5 (0x05)"     -123 -> "-123 (0xff85)"     0.5 -> "{ mantissa 1, base 2, exponent -1 }"
#pragma once

#include <cstddef>
#include <cstdint>

#include "codec/values.h"
#include "contents/text_sink.h"

namespace zxqtlv {

// Decimal, and behind it the value in hexadecimal where `addition` says so. Positive values keep a
// leading zero bit in hexadecimal, as their contents octets do; negative ones at least one "f".
void writeInteger(TextSink& sink, std::int32_t value, bool addition);

// An INTEGER of 5 or more octets. Hexadecimal, but for 5 octets of which the first is 00 or FF:
// those are decimal, of the low four octets alone, with the hexadecimal behind as an addition.
void formatHugeInteger(TextSink& sink, OctetView octets, bool addition);

// "0x" and two lower-case digits per octet; a first octet FF of 5 or more is left out.
void formatHugeIntegerHex(TextSink& sink, OctetView octets);

enum class RealClass : std::int32_t {
    Finite = -1,
    PlusInfinity = 0x40,
    MinusInfinity = 0x41,
    Special = 0x42,  // zero, minus zero or not a number
};

inline constexpr std::size_t kRealText = 112;

// Writes the NUL-terminated text of `value`, a double (`width` 8) or one that stands for a float
// (4), to `out`, which has room for kRealText characters. The largest finite value of the width
// counts as infinite.
RealClass formatRealText(double value, int width, char* out);

// Puts a point in the place of the first comma, for a locale that prints one.
void replaceDecimalComma(char* text);

// The text of a double, and behind a finite one the "%E" form where `addition` says so.
void writeReal(TextSink& sink, double value, bool addition);

}  // namespace zxqtlv
