// The decomposed layout: one line per triple with its place, lengths, name and contents.
//
// For: the layout's entry and its walk over the records.
// Not for: its line (tlv/decomposed_line.h).
#pragma once

#include "runtime/context.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// Lists the buffer. Offsets count from the start of each record.
void printDecomposed(ZxqGlobal& context, EncodedBuffer& buffer);

}  // namespace zxqtlv
