// The hexadecimal layout: every triple as its own octets, one line each, two blanks per level.
//
// For: the layout's entry.
// Not for: its line (tlv/hexadecimal_line.h) or its walk (tlv/record_walk.h).
#pragma once

#include "runtime/context.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// Lists the buffer. While TrapEnabled is set, the buffer is registered for the report of a
// premature end as long as the walk lasts. While FixEncoding is set, long-form lengths are repaired
// in the buffer; a walk without a repair takes the octets that it could not walk off its length.
void printHexadecimal(ZxqGlobal& context, EncodedBuffer& buffer);

}  // namespace zxqtlv
