// The syntax layout: rows of type, length and contents.
//
// For: the layout's entry.
// Not for: its row (tlv/syntax_line.h) or its walk (tlv/record_walk.h).
#pragma once

#include "runtime/context.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// Lists the buffer. SyntaxLayout is set in the context's flags while it does.
void printSyntax(ZxqGlobal& context, EncodedBuffer& buffer);

}  // namespace zxqtlv
