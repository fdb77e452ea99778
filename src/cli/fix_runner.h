// The repair of a whole file: passes of the hexadecimal walk until one changes nothing.
//
// For: loading, walking pass by pass, writing the repaired encoding when anything was repaired.
// Not for: the repair of a length (tlv/long_form_recovery.h), or telling the outcome
// (cli/fix_outcome.h).
#pragma once

#include <cstdint>

#include "runtime/context.h"

namespace zxqtlv {

// Repairs the file `inputName` into the file `fixedName`, which may be the same: the input is read
// whole and closed before the other is opened. Without TraceFixes nothing is printed. Returns the
// last KX code raised in the last pass, 45 or 46 for a file that cannot be read (45 also for one
// that cannot be created), 72 for one that cannot be written whole, 17 for a name that is null, 1
// to 3 for an internal failure; 0 otherwise. Leaves the number of repairs of all passes in the
// fixup count. Flags, print hook, guard and signal handlers are afterwards as they were.
std::int32_t runFix(ZxqGlobal& context, const char* inputName, const char* fixedName);

// The number of repairs of the last run.
std::int32_t fixupCount(const ZxqGlobal& context);

}  // namespace zxqtlv
