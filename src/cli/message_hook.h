// The tool's own message hook: how a raised KX code reads in a listing.
//
// For: choosing the text of a code, filling in its details, the blank line around misencodings,
// and the octets of a record that ends too early.
// Not for: deciding whether a code is reported; `kxReportError` does.
//
//     kxSetMessageHook(&context, &printMessage);
#pragma once

#include <cstdint>

#include "runtime/context.h"

namespace zxqtlv {

// Prints the message of `code` (a number of 78 or above prints nothing) and returns the code.
// `detail1` is a number for KX035E and KX038E, a position in the buffer being walked for KX017E,
// else a NUL-terminated text; `detail2` a number, or the text's length; 0 when absent. While
// TrapEnabled is set the prefix of the text ("KX045E: ") is left out.
std::uint32_t printMessage(ZxqGlobal* context, std::uint32_t code, std::uintptr_t detail1,
                           std::int32_t detail2);

}  // namespace zxqtlv
