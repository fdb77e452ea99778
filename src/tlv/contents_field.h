// The contents text of a line in the decomposed and syntax layouts.
//
// For: putting a contents text behind what the line shows already, cut to the line.
// Not for: the text itself (contents/contents_text.h).
#pragma once

#include "contents/contents_text.h"
#include "runtime/context.h"
#include "runtime/print.h"
#include "tlv/header.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// Prints the text of contents that are present, at the column reached. A text that would pass
// character 79 ends there in "...". Valid INTEGER, REAL and time values may have 1024 characters;
// with NoShort any text is printed whole. No line feed follows.
void printContentsText(ZxqGlobal& context, const Contents& contents, const TripleHeader& header);

// Reads the contents of the triple whose header was read at `triple`, and prints the text of a
// primitive triple or of what stands for invalid contents, behind a colon where there is to be one.
// Returns true when the contents are invalid.
inline bool printContents(ZxqGlobal& context, ContentsReader& reader, OctetView triple,
                          const TripleHeader& header, bool colon) {
    const Contents& contents = reader.read(triple, header);
    if (contents.present && (!header.constructed || contents.invalid)) {
        if (colon) {
            printBlock(context).append(':');
        }
        printContentsText(context, contents, header);
    }
    return contents.invalid;
}

}  // namespace zxqtlv
