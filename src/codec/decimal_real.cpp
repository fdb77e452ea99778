#include "codec/decimal_real.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <limits>
#include <system_error>

#include "runtime/hex_text.h"

namespace zxqtlv {
namespace {

// More digits than ever decide how a number rounds to a double; what lies behind them only matters
// as being zero or not.
constexpr std::size_t kDigits = 800;
constexpr std::int64_t kHugeExponent = 1'000'000'000'000;

bool isDigit(int character) {
    return character >= '0' && character <= '9';
}

class DecimalReader {
  public:
    explicit DecimalReader(OctetView text) : text_(text) {}

    std::optional<double> read(DecimalForm form);

  private:
    int peek() const { return text_.remaining > 0 ? *text_.position : -1; }
    void skip() { text_ = text_.from(1); }
    bool readSign();
    bool readDigits(bool fraction);
    bool readExponent();
    double value() const;

    OctetView text_;
    std::array<char, kDigits> digits_{};  // significant ones, without leading zeros
    std::size_t count_ = 0;
    bool more_ = false;          // something non-zero lies behind the digits
    std::int64_t exponent_ = 0;  // of the last digit held, as a power of ten
    bool negative_ = false;
};

bool DecimalReader::readSign() {
    const int sign = peek();
    if (sign == '-' || sign == '+') {
        skip();
    }
    return sign == '-';
}

// False where there is no digit.
bool DecimalReader::readDigits(bool fraction) {
    bool any = false;
    for (; isDigit(peek()); skip()) {
        const int digit = peek();
        any = true;
        if (count_ == kDigits) {
            more_ = more_ || digit != '0';
            exponent_ += fraction ? 0 : 1;
            continue;
        }
        exponent_ -= fraction ? 1 : 0;
        if (count_ != 0 || digit != '0') {
            digits_[count_++] = static_cast<char>(digit);
        }
    }
    return any;
}

bool DecimalReader::readExponent() {
    if (peek() != 'E' && peek() != 'e') {
        return false;
    }
    skip();
    const bool negative = readSign();
    std::int64_t exponent = 0;
    const bool any = isDigit(peek());
    for (; isDigit(peek()); skip()) {
        exponent = exponent < kHugeExponent ? exponent * 10 + (peek() - '0') : exponent;
    }
    exponent_ += negative ? -exponent : exponent;
    return any;
}

// The digits fit, with a mark and an exponent, into a text that the library converts exactly.
double DecimalReader::value() const {
    double result = 0.0;
    if (count_ != 0) {
        std::array<char, kDigits + 32> text;
        char* out = text.data();
        for (std::size_t i = 0; i < count_; ++i) {
            *out++ = digits_[i];
        }
        std::int64_t exponent = exponent_;
        if (more_) {
            *out++ = '1';
            --exponent;
        }
        *out++ = 'e';
        out = writeDecimal(out, exponent);
        const std::errc error = std::from_chars(text.data(), out, result).ec;
        if (error == std::errc::result_out_of_range) {
            const bool large = exponent + static_cast<std::int64_t>(count_) > 0;
            result = large ? std::numeric_limits<double>::infinity() : 0.0;
        }
    }
    return negative_ ? -result : result;
}

std::optional<double> DecimalReader::read(DecimalForm form) {
    while (peek() == ' ') {
        skip();
    }
    negative_ = readSign();
    bool digits = readDigits(false);
    const bool marked = form != DecimalForm::Nr1 && (peek() == '.' || peek() == ',');
    if (marked) {
        skip();
        digits = readDigits(true) || digits;
    }
    if (!digits || (form == DecimalForm::Nr2 && !marked) ||
        (form == DecimalForm::Nr3 && !readExponent()) || peek() != -1) {
        return std::nullopt;
    }
    return value();
}

}  // namespace

std::optional<double> decodeDecimal(OctetView text, DecimalForm form) {
    return DecimalReader(text).read(form);
}

}  // namespace zxqtlv
