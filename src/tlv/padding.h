// Padding between records.
//
// For: recognising a run of pad bytes where a record may start, announcing it and showing it.
// Not for: finding the next record; the walkers go on behind the run.
#pragma once

#include <cstdint>

#include "runtime/context.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// Octets of padding at `place`, 0 for none, after printing the notice and the octets. While
// TrapEnabled is set only the byte of the pad setting counts. Otherwise, with automatic padding
// switched on for the context, that byte or, with none given, 00 and FF count.
std::int32_t skipPadding(ZxqGlobal& context, OctetView place);

}  // namespace zxqtlv
