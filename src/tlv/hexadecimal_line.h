// One line of the hexadecimal layout.
//
// For: a triple shown as its own octets: identifier, length, and contents when it is primitive.
// Not for: walking; tlv/record_walk.h calls this for each triple.
//
//     02 01 05
//     04 820400(1024) 0001020304...
//     04 ?05 4142
#pragma once

#include "tlv/line.h"

namespace zxqtlv {

// A line starts with a line feed. A faulty one starts without, behind its message, shows "?" and
// ends its level; a faulty constructed triple shows its contents like a primitive one. Raises
// KX073E, KX017E, KX038E and KX035E.
bool printHexadecimalLine(ZxqGlobal& context, ContentsReader& reader, const Line& line);

}  // namespace zxqtlv
