// Octets as a hexadecimal dump, for tracing.
//
// For: two layouts, chosen by bit 0x80 of the trace level: plain, 32 octets a line in groups of
// four; annotated, 16 octets a line with offsets and characters. Also switching tracing on, which
// makes decoders dump what they are about to decode.
// Not for: listings; these show octets without gaps.
//
//     #   000000:   3003 0201 05                               0....
#pragma once

#include <cstdint>

#include "runtime/context.h"

namespace zxqtlv {

// Bits of the trace level.
enum TraceBit : std::uint32_t {
    kTraceMessages = 0x40,   // runtime messages are printed
    kTraceAnnotated = 0x80,  // dumps have offsets and characters
};

// Dumps `length` octets. Prints nothing for a null context or data, or a length below 1.
void zxqPrintOctets(ZxqGlobal* context, const std::uint8_t* data, std::int32_t length);

// Sets the trace level and fills the context's dump-function slot; level 0 empties it. Returns 0 or
// kNullArgument.
std::int32_t zxqEnableTrace(ZxqGlobal* context, std::uint32_t level);

// Dumps an encoding that is about to be decoded, when the trace level is not zero. The dump does
// not count for the column of the line that it interrupts.
void traceEncoding(ZxqGlobal& context, const std::uint8_t* data, std::int32_t length);

}  // namespace zxqtlv
