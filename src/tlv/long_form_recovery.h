// The repair of a long-form length whose first octet was written as 00 where 81 fits.
//
// For: deciding whether the current triple of a walk has such a length, and repairing it.
// Not for: passes over a whole encoding, or files (cli/fix_runner.h).
//
//     04 00 82 ... -> 04 81 82 ...
#pragma once

#include "runtime/context.h"
#include "tlv/octet_view.h"
#include "tlv/triple_walk.h"

namespace zxqtlv {

// Repairs the length of the current triple in `buffer`, the one that `walk` goes over, when the
// encoding does not parse from there as it stands but the triple fits with the repair. Announces
// it, counts it and returns true then. Tries no more once 1000 repairs are counted. What the trial
// of the encoding finds wrong is raised silently.
bool recoverLongForm(ZxqGlobal& context, TripleWalk& walk, EncodedBuffer& buffer);

}  // namespace zxqtlv
