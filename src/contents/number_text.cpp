#include "contents/number_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace zxqtlv {
namespace {

constexpr char kLowerHexDigits[] = "0123456789abcdef";
constexpr double kLargestFloat = 3.4028234663852886e+38;
constexpr double kLargestDouble = 1.7976931348623157e+308;
constexpr std::int32_t kDecimalHuge = 5;  // octets of the only huge integers shown in decimal

// What stands between "0x" and the digits of a value.
std::string_view hexPrefix(std::string_view digits) {
    if (digits.size() % 2 != 0) {
        return "0";
    }
    return digits.front() >= '8' ? "00" : "";
}

void putHexAddition(TextSink& sink, std::int32_t value) {
    std::array<char, 8> storage;
    const auto bits = static_cast<std::uint32_t>(value);
    char* const start = storage.data();
    std::string_view digits(start, static_cast<std::size_t>(writeLowerHex(start, bits) - start));
    sink.put(" (0x");
    if (value < 0) {
        const std::size_t skipped = std::min(digits.find_first_not_of('f'), digits.size());
        digits.remove_prefix(skipped);
        if (skipped != 0) {
            sink.put(skipped % 2 != 0 ? "f" : "ff");
        }
    } else if (digits.size() == 1) {
        sink.put('0');  // two digits at least, of which the first is then below 8
    } else {
        sink.put(hexPrefix(digits));
    }
    sink.put(digits);
    sink.put(')');
}

// The text and a terminator.
void putText(char* out, std::string_view text) {
    out[text.copy(out, text.size())] = '\0';
}

std::uint32_t lowFourOctets(OctetView octets) {
    std::uint32_t value = 0;
    for (std::int32_t i = octets.remaining - 4; i < octets.remaining; ++i) {
        value = (value << 8) | octets.position[i];
    }
    return value;
}

}  // namespace

void writeInteger(TextSink& sink, std::int32_t value, bool addition) {
    sink.putDecimal(value);
    if (addition) {
        putHexAddition(sink, value);
    }
}

void formatHugeInteger(TextSink& sink, OctetView octets, bool addition) {
    const std::uint8_t first = octets.position[0];
    if (octets.remaining != kDecimalHuge || (first != 0x00 && first != 0xFF)) {
        formatHugeIntegerHex(sink, octets);
        return;
    }
    const std::uint32_t low = lowFourOctets(octets);
    // The sign of the low four octets alone: a first octet FF adds nothing to them.
    sink.putDecimal(first == 0 ? std::int64_t{low} : std::int64_t{static_cast<std::int32_t>(low)});
    if (addition) {
        sink.put(" (");
        formatHugeIntegerHex(sink, octets);
        sink.put(')');
    }
}

void formatHugeIntegerHex(TextSink& sink, OctetView octets) {
    sink.put("0x");
    if (octets.remaining >= kDecimalHuge && octets.position[0] == 0xFF) {
        octets = octets.from(1);
    }
    for (std::int32_t i = 0; i < octets.remaining && !sink.full(); ++i) {
        sink.put(kLowerHexDigits[octets.position[i] >> 4]);
        sink.put(kLowerHexDigits[octets.position[i] & 15]);
    }
}

RealClass formatRealText(double value, int width, char* out) {
    const double limit = width == 8 ? kLargestDouble : kLargestFloat;
    if (value >= limit) {
        putText(out, "PLUS-INFINITY");
        return RealClass::PlusInfinity;
    }
    if (-value >= limit) {
        putText(out, "MINUS-INFINITY");
        return RealClass::MinusInfinity;
    }
    if (value == 0.0 || std::isnan(value)) {
        putText(out, std::isnan(value) ? "NOT-A-NUMBER" : std::signbit(value) ? "-0" : "0");
        return RealClass::Special;
    }
    constexpr int kMantissaBits = 53;
    int exponent = 0;
    auto mantissa = static_cast<long long>(std::ldexp(std::frexp(value, &exponent), kMantissaBits));
    exponent -= kMantissaBits;
    for (; mantissa % 2 == 0; mantissa /= 2) {
        ++exponent;
    }
    std::snprintf(out, kRealText, "{ mantissa %lld, base 2, exponent %d }", mantissa, exponent);
    return RealClass::Finite;
}

void replaceDecimalComma(char* text) {
    if (char* const comma = std::strchr(text, ','); comma != nullptr) {
        *comma = '.';
    }
}

void writeReal(TextSink& sink, double value, bool addition) {
    std::array<char, kRealText> text;
    const RealClass realClass = formatRealText(value, 8, text.data());
    sink.put(std::string_view(text.data()));
    if (realClass == RealClass::Finite && addition) {
        std::snprintf(text.data(), text.size(), "%E", value);
        replaceDecimalComma(text.data());
        sink.put(" (");
        sink.put(std::string_view(text.data()));
        sink.put(')');
    }
}

}  // namespace zxqtlv
