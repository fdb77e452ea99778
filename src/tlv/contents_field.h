// The contents text of a line in the decomposed and syntax layouts.
//
// For: putting a contents text behind what the line shows already, cut to the line.
// Not for: the text itself (contents/contents_text.h).
#pragma once

#include "contents/contents_text.h"
#include "runtime/context.h"
#include "tlv/header.h"

namespace zxqtlv {

// Prints the text of contents that are present, at the column reached. A text that would pass
// character 79 ends there in "...". Valid INTEGER, REAL and time values may have 1024 characters;
// with NoShort any text is printed whole. No line feed follows.
void printContentsText(ZxqGlobal& context, const Contents& contents, const TripleHeader& header);

}  // namespace zxqtlv
