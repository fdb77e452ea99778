// The one way out for text, and the redirection of it into a file.
//
// For: `zxqprint`, through which everything is printed, and trace files.
// Not for: composing listings piece by piece; runtime/print_block.h collects those.
//
// Who prints, the first that is set: vprintHook, printHook, a printFunction other than `fprintf`,
// else `vfprintf` on the output stream followed by a flush.
#pragma once

#include <cstdarg>
#include <cstdint>

#include "runtime/context.h"
#include "runtime/print_block.h"

namespace zxqtlv {

// Prints through the context, after the text that waits in its block. Returns what the printing
// function returned (characters, or negative on an error), 0 when nothing was printed. A null
// context prints to `stdout`. A print hook and a replaced print function receive the first eight
// argument words; a double takes two of them.
[[gnu::format(printf, 2, 3)]] std::int32_t zxqprint(ZxqGlobal* context, const char* format, ...);

// The default path: `vfprintf` and `fflush` on the output stream (`stdout` for a null context).
[[gnu::format(printf, 2, 0)]] std::int32_t zxqvprint(ZxqGlobal* context, const char* format,
                                                     std::va_list arguments);

// The block of an initialised context.
PrintBlock& printBlock(ZxqGlobal& context);

// Redirects the output stream into a new file. Returns 0, kNullArgument, kCannotOpenTraceFile or
// kTraceFileAlreadyOpen; on failure the output stays where it was.
std::int32_t zxqOpenTraceFile(ZxqGlobal* context, const char* fileName);

// Ends the redirection; 0 also when there is none. Returns kNullArgument, or
// kCannotCloseTraceFile when some text could not be written: the redirection then stays in force.
std::int32_t zxqCloseTraceFile(ZxqGlobal* context);

// Ends the redirection whatever becomes of the file.
void dropTraceFile(ZxqGlobal& context);

// Whether some text of this context did not reach its stream.
bool printFailed(const ZxqGlobal& context);

}  // namespace zxqtlv
