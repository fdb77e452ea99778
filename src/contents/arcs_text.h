// Object identifier arcs as text.
//
//     2A 86 48 -> "1 2 840"
#pragma once

#include "codec/values.h"
#include "contents/text_sink.h"

namespace zxqtlv {

// The arcs in decimal, whatever their size, with a blank between two. With `braces`, a brace and a
// blank stand at each end.
void writeArcs(TextSink& sink, const IdentifierArcs& arcs, bool braces);

}  // namespace zxqtlv
