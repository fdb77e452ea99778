// The passes of a repair over an encoding in memory.
//
// For: walking the encoding until a pass repairs nothing, whatever faults the passes meet.
// Not for: files, hooks or outcomes (cli/fix_runner.h); the repair of one length
// (tlv/long_form_recovery.h).
#pragma once

#include <cstdint>

#include "runtime/context.h"
#include "runtime/trap.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// Zero octets that must stand behind the encoding, counted in its length: a first triple that tells
// no length of its own is walked with them.
inline constexpr std::int32_t kSpareOctets = 16;

struct FixResult {
    std::int32_t failure;  // internal, 1 to 3, or a fatal code before the first pass; else 0
    std::int32_t fixups;   // of all passes
};

// Repairs the encoding in `buffer` in place and brings its length to that of the repaired encoding.
// What was wrong at last is left as the context's last error. `guard` takes the fatal codes of each
// pass: one that repaired something is followed by another all the same. Sets FixEncoding.
FixResult repairEncoding(ZxqGlobal& context, TrapGuard& guard, EncodedBuffer& buffer);

}  // namespace zxqtlv
