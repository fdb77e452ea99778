#include "runtime/argument_words.h"

#include <bit>
#include <cstddef>
#include <string_view>

namespace zxqtlv {
namespace {

enum class Kind { None, Int, Long, Pointer, Double };

// The conversion that starts behind a '%'; `cursor` moves past it, and `stars` counts the widths
// and precisions that are arguments of their own.
Kind readConversion(std::string_view format, std::size_t& cursor, int& stars) {
    bool isLong = false;
    for (; cursor < format.size(); ++cursor) {
        const char c = format[cursor];
        if (c == '*') {
            ++stars;
        } else if (c == 'l' || c == 'z' || c == 'j' || c == 't') {
            isLong = true;
        } else if (std::string_view("diuoxXc").find(c) != std::string_view::npos) {
            ++cursor;
            return isLong ? Kind::Long : Kind::Int;
        } else if (c == 's' || c == 'p') {
            ++cursor;
            return Kind::Pointer;
        } else if (std::string_view("fFeEgGaA").find(c) != std::string_view::npos) {
            ++cursor;
            return Kind::Double;
        } else if (c == '%') {
            ++cursor;
            return Kind::None;
        }
    }
    return Kind::None;
}

}  // namespace

ArgumentWords takeArgumentWords(const char* format, std::va_list arguments) {
    ArgumentWords words{};
    std::size_t used = 0;
    const auto put = [&](std::uintptr_t word) {
        if (used < words.size()) {
            words[used++] = word;
        }
    };
    const std::string_view text(format);
    for (std::size_t cursor = 0; cursor < text.size() && used < words.size();) {
        if (text[cursor++] != '%') {
            continue;
        }
        int stars = 0;
        const Kind kind = readConversion(text, cursor, stars);
        for (; stars > 0; --stars) {
            put(static_cast<std::uintptr_t>(va_arg(arguments, int)));
        }
        if (kind == Kind::Int) {
            put(static_cast<std::uintptr_t>(va_arg(arguments, int)));
        } else if (kind == Kind::Long || kind == Kind::Pointer) {
            put(va_arg(arguments, std::uintptr_t));
        } else if (kind == Kind::Double) {
            const auto bits = std::bit_cast<std::uint64_t>(va_arg(arguments, double));
            put(static_cast<std::uint32_t>(bits));
            put(static_cast<std::uint32_t>(bits >> 32));
        }
    }
    return words;
}

}  // namespace zxqtlv
