// REAL contents octets to a double (X.690, 8.5).
//
// For: the binary, decimal and special forms, correctly rounded (nearest, ties to even).
// Not for: text of the value (contents/number_text.h).
//
//     decodeReal(80 FF 01)  // 0.5
#pragma once

#include <optional>

#include "tlv/octet_view.h"

namespace zxqtlv {

// The value; none for contents that are no REAL. A value too large is infinite, one too small
// zero, both with their sign. Takes time linear in the octets and no memory.
std::optional<double> decodeReal(OctetView contents);

}  // namespace zxqtlv
