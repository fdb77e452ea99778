// The three layouts by number.
#pragma once

namespace zxqtlv {

enum class TlvFormat { None = 0, Hexadecimal = 1, Decomposed = 2, Syntax = 3 };

}  // namespace zxqtlv
