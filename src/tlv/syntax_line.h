// One row of the syntax layout: type, length and contents in columns.
//
// For: a triple with its type by name.
// Not for: walking; tlv/record_walk.h prints these rows for each triple.
//
//     Type         Length  Contents
//     BOOLEAN      1       TRUE
#pragma once

#include "contents/contents_text.h"
#include "runtime/context.h"
#include "tlv/line.h"

namespace zxqtlv {

// Prints the row, under column titles where it is the first of its level. Returns true when the
// walk of this level must stop behind it: the length is unreadable or runs past the data, the
// contents are invalid, or there is no name and so no row. Raises KX017E, KX035E, KX037E, KX038E
// and KX073E.
bool printSyntaxLine(ZxqGlobal& context, ContentsReader& reader, const Line& line);

}  // namespace zxqtlv
