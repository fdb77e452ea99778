// The command-line driver: one run of the tool, from its arguments to its status.
//
// For: parsing, redirecting the output, loading, listing or repairing, and cleaning up on every
// way out.
// Not for: bringing up the context or the banner; cli/program.h does.
#pragma once

#include <cstdint>

#include "runtime/context.h"

namespace zxqtlv {

// Runs the tool on an initialised context. `arguments` holds the program name first. Returns 0,
// 1 to 15 for the driver's own errors, a KX code for inputs that cannot be read and for fatal
// codes, or 72 for a listing that could not be written to the file named for it. The context's
// flags and signal handlers are afterwards as they were.
std::int32_t runDriver(ZxqGlobal& context, int count, char* const* arguments);

}  // namespace zxqtlv
