// Formatting the runtime's own messages, and sentences for its return codes.
//
// For: failures inside encoders and decoders ("D0103S: The requested encoding rules were not
// linked: 'PER'.").
// Not for: KX messages; those are raised with `kxReportError`.
#pragma once

#include <cstdint>

#include "runtime/context.h"

namespace zxqtlv {

// Writes `operation` ('E' or 'D'), the entry's text, its detail and ".\n" into `buffer`, which has
// kMessageBufferSize characters (a longer detail is cut). Prints it when the direction's flags
// word has PrintMessages or the trace level has bit 0x40. `detail` points at the value of the
// entry's kind: a `const long*`, a `const double*` or a `const char*` text; null counts as no
// detail. Returns the entry's return code, or kNullArgument without a context or buffer.
std::int32_t zxqRuntimeError(ZxqGlobal* context, char* buffer, std::uint32_t entry, char operation,
                             const void* detail);

// A short sentence for a runtime return code; never null.
const char* zxqDescribeReturnCode(std::uint32_t code);

// The trace level of the context: 0x40 prints every runtime message. All bits set for null.
std::uint32_t zxqGetTraceLevel(const ZxqGlobal* context);

}  // namespace zxqtlv
