// The decimal forms of REAL: ISO 6093 numbers as text.
//
// For: NR1 ("  -12"), NR2 ("1.5" or "1,5") and NR3 ("15E-1").
// Not for: any other spelling; nothing may follow the number.
#pragma once

#include <cstdint>
#include <optional>

#include "tlv/octet_view.h"

namespace zxqtlv {

enum class DecimalForm : std::uint8_t { Nr1 = 1, Nr2 = 2, Nr3 = 3 };

// The correctly rounded value; none for text that is no number of the form.
std::optional<double> decodeDecimal(OctetView text, DecimalForm form);

}  // namespace zxqtlv
