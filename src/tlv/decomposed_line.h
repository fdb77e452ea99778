// One line of the decomposed layout.
//
// For: where a triple starts, how deep, its header and contents lengths, form, name and contents.
// Not for: walking; tlv/decomposed_layout.h calls this for each triple.
//
//       2:d= 2 hl=2 l=   1 prim: INTEGER          :5 (0x05)
#pragma once

#include <cstddef>
#include <cstdint>

#include "contents/contents_text.h"
#include "runtime/context.h"
#include "tlv/header.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

struct DecomposedLine {
    OctetView triple;
    const TripleHeader& header;  // read at `triple`
    std::size_t depth;           // 1 for the records of the input
    std::int64_t offset;         // octets from the start of the record
    bool closing;                // an end-of-contents pair is expected here
};

// Prints the line and, for an indefinite triple that is closed at once, that of its closing pair.
// Returns true when the triple must not be entered. A triple without a name prints nothing.
// Raises KX017E, KX035E, KX037E, KX038E and KX073E.
bool printDecomposedLine(ZxqGlobal& context, ContentsReader& reader, const DecomposedLine& line);

}  // namespace zxqtlv
