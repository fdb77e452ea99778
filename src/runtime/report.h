// Raising a KX code: the one way in which a fault of the input is reported.
//
// For: recording the code, telling the message hook, and unwinding for fatal codes.
// Not for: choosing or printing a text; the message hook does, from runtime/kx_messages.h.
//
//     kxReportError(&context, kLengthTooLong, 5, 2);  // reported, then the caller goes on
#pragma once

#include <cstdint>

#include "runtime/context.h"
#include "runtime/kx_messages.h"

namespace zxqtlv {

// Stores `code` (0..77) as the last error and treats it by its class:
//   internal (1, 2, 3): no message, unwinds;
//   fatal input (45..48, and 17 unless PrematureEndNotFatal is set): message, unwinds;
//   misencoding (18, 19, 21, 35..38, 73, 74, and 17 when that flag is set): message;
//   ordinary (all others): message, also while QuietNonFatal keeps the others silent.
// An unwind throws `TrapFailure` when TrapEnabled is set and a guard is active; otherwise, and for
// the classes without one, the code is returned. `detail1` is a text pointer, a position or a
// number, 0 when absent; what the details mean depends on the code.
std::uint32_t kxReportError(ZxqGlobal* context, std::uint32_t code, std::uintptr_t detail1 = 0,
                            std::int32_t detail2 = 0);

// The last KX code raised, or kNullArgument without a context.
std::uint32_t kxLastError(const ZxqGlobal* context);

}  // namespace zxqtlv
