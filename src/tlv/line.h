// What the walker and the line printers of the hexadecimal and syntax layouts tell each other.
//
// For: the common shape of a line printer, so that one walker serves both layouts.
#pragma once

#include <cstddef>

#include "contents/contents_text.h"
#include "runtime/context.h"
#include "runtime/print_block.h"
#include "tlv/header.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

struct Line {
    OctetView triple;
    const TripleHeader& header;  // read at `triple`
    std::size_t depth;
    bool titled;  // first of its level: column titles stand above it
    bool fixed;   // its first length octet was 00 and is repaired
};

// Blanks in front of the line, in characters.
inline std::size_t indentation(const Line& line) {
    return 2 * line.depth;
}

// Starts the row of the line: a new one where the triple is sound, else behind the message about
// it. Returns room for `count` characters; what was written counts after `commit`.
inline char* startRow(PrintBlock& out, const Line& line, bool sound, std::size_t count) {
    if (sound) {
        return out.startLine(indentation(line), count);
    }
    out.startRow();
    out.appendBlanks(indentation(line));
    return out.reserve(count);
}

// Prints the line. Returns true when the walk of this level must stop behind it.
using LinePrinter = bool (*)(ZxqGlobal& context, ContentsReader& reader, const Line& line);

}  // namespace zxqtlv
