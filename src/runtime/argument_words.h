// The fixed group of argument words that a print hook receives.
//
// For: reading the first eight words behind a printf format, as far as the format has any.
// Not for: formatting. The unused words are 0.
#pragma once

#include <array>
#include <cstdarg>
#include <cstdint>

namespace zxqtlv {

using ArgumentWords = std::array<std::uintptr_t, 8>;

// Takes the arguments that `format` calls for. An integer or pointer is one word; a double is two,
// its low and its high 32 bits. Arguments past the eighth word are not looked at.
ArgumentWords takeArgumentWords(const char* format, std::va_list arguments);

}  // namespace zxqtlv
