// The contents text of a line in the decomposed and syntax layouts.
//
// For: putting a contents text behind what the line shows already, cut to the line.
// Not for: the text itself (contents/contents_text.h).
#pragma once

#include "contents/contents_text.h"
#include "runtime/context.h"
#include "tlv/header.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// Reads the contents of the triple whose header was read at `triple`, and prints their text at the
// column reached, behind a colon where there is to be one: those of a primitive triple, and
// substitutes for invalid ones. A text that would pass character 79 ends there in "...". Valid
// INTEGER, REAL and time values may have 1024 characters; with NoShort any text is printed whole.
// No line feed follows. Returns true when the contents are invalid. What a trace prints on the way
// does not count for the column.
bool printContents(ZxqGlobal& context, ContentsReader& reader, OctetView triple,
                   const TripleHeader& header, bool colon);

}  // namespace zxqtlv
