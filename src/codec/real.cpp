#include "codec/real.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "codec/decimal_real.h"

namespace zxqtlv {
namespace {

constexpr std::uint8_t kBinary = 0x80;
constexpr std::uint8_t kNegative = 0x40;
// Far outside what a double can hold, and small enough to be added up without care.
constexpr std::int64_t kHugeExponent = std::int64_t{1} << 40;

std::optional<double> decodeSpecial(OctetView contents) {
    if (contents.remaining != 1) {
        return std::nullopt;
    }
    switch (contents.position[0]) {
        case 0x40:
            return std::numeric_limits<double>::infinity();
        case 0x41:
            return -std::numeric_limits<double>::infinity();
        case 0x42:
            return std::numeric_limits<double>::quiet_NaN();
        case 0x43:
            return -0.0;
        default:
            return std::nullopt;
    }
}

// Two's complement of any size, held at +-kHugeExponent. At least one octet.
std::int64_t readExponent(OctetView octets) {
    const bool negative = (octets.position[0] & 0x80) != 0;
    std::int64_t value = negative ? -1 : 0;
    for (std::int32_t i = 0; i < octets.remaining; ++i) {
        value = value * 256 + octets.position[i];
        if (value > kHugeExponent || value < -kHugeExponent) {
            return negative ? -kHugeExponent : kHugeExponent;
        }
    }
    return value;
}

// An unsigned number of any size as its 64 leading bits, which are exact but for one low bit that
// says whether anything non-zero was left out.
struct Leading {
    std::uint64_t bits;
    std::int64_t exponent;  // the number is about bits * 2^exponent
};

Leading readMantissa(OctetView octets) {
    while (octets.remaining > 0 && octets.position[0] == 0) {
        octets = octets.from(1);
    }
    std::uint64_t bits = 0;
    const std::int32_t used = std::min(octets.remaining, 8);
    for (std::int32_t i = 0; i < used; ++i) {
        bits = (bits << 8) | octets.position[i];
    }
    const bool more = std::any_of(octets.position + used, octets.position + octets.remaining,
                                  [](std::uint8_t octet) { return octet != 0; });
    return {bits | (more ? 1U : 0U), 8 * std::int64_t{octets.remaining - used}};
}

// bits * 2^exponent, rounded once: also where the result is subnormal, `ldexp` of an unrounded
// product would round a second time.
double scale(Leading number) {
    if (number.bits == 0) {
        return 0.0;
    }
    const int shift = std::countl_zero(number.bits);
    const std::uint64_t bits = number.bits
                               << shift;  // the value is below 2^(exponent - shift + 64)
    const std::int64_t top = number.exponent - shift + 64;
    constexpr std::int64_t kLowest = std::numeric_limits<double>::min_exponent;  // -1021
    if (top > std::numeric_limits<double>::max_exponent) {
        return std::numeric_limits<double>::infinity();
    }
    const std::int64_t lost = kLowest - top;  // bits that a subnormal number has fewer
    const std::int64_t kept = lost > 0 ? 53 - lost : 53;
    if (kept < 0) {
        return 0.0;
    }
    const auto dropped = static_cast<int>(64 - kept);  // 11 to 64
    std::uint64_t result = dropped == 64 ? 0 : bits >> dropped;
    const std::uint64_t rest = dropped == 64 ? bits : bits & ((std::uint64_t{1} << dropped) - 1);
    const std::uint64_t half = std::uint64_t{1} << (dropped - 1);
    if (rest > half || (rest == half && (result & 1) != 0)) {
        ++result;
    }
    return std::ldexp(static_cast<double>(result), static_cast<int>(top - kept));
}

std::optional<double> decodeBinary(OctetView contents) {
    static constexpr std::int32_t kBaseBits[] = {1, 3, 4, 0};
    const std::uint8_t first = contents.position[0];
    const std::int32_t baseBits = kBaseBits[(first >> 4) & 3];
    OctetView octets = contents.from(1);
    std::int32_t exponentOctets = (first & 3) + 1;
    if (exponentOctets == 4) {
        exponentOctets = octets.remaining > 0 ? octets.position[0] : 0;
        octets = octets.from(1);
    }
    if (baseBits == 0 || exponentOctets < 1 || octets.remaining <= exponentOctets) {
        return std::nullopt;
    }
    const std::int64_t exponent = readExponent({octets.position, exponentOctets});
    Leading number = readMantissa(octets.from(exponentOctets));
    number.exponent += ((first >> 2) & 3) + baseBits * exponent;
    const double value = scale(number);
    return (first & kNegative) != 0 ? -value : value;
}

}  // namespace

std::optional<double> decodeReal(OctetView contents) {
    if (contents.remaining <= 0) {
        return 0.0;
    }
    const std::uint8_t first = contents.position[0];
    if ((first & kBinary) != 0) {
        return decodeBinary(contents);
    }
    if (first >= 1 && first <= 3) {
        return decodeDecimal(contents.from(1), static_cast<DecimalForm>(first));
    }
    return decodeSpecial(contents);
}

}  // namespace zxqtlv
