// The walk of the hexadecimal and the syntax layout over the records of an encoding.
//
// For: going through all triples, calling a line printer for each, closing indefinite triples,
// skipping padding between records and announcing the second and further ones.
// Not for: the decomposed layout, whose records and closing lines are told otherwise.
#pragma once

#include <cstdint>

#include "runtime/context.h"
#include "tlv/line.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// Walks the buffer. While FixEncoding is set, starts no record where no more octets are left than
// the stop point says, and in the hexadecimal layout repairs long-form lengths in the buffer.
// Returns the octets at the end that were not walked.
std::int32_t walkRecords(ZxqGlobal& context, EncodedBuffer& buffer, LinePrinter printLine);

}  // namespace zxqtlv
