// The driver's own errors: their texts, and the usage and help texts.
//
// For: statuses 1 to 15 of the command line, printed and turned into an unwind.
// Not for: KX codes (runtime/report.h).
//
//     fail(context, kTooManyInputs);  // prints the text and the usage; does not return
#pragma once

#include <cstdint>

#include "runtime/context.h"

namespace zxqtlv {

// Indexes of the message table; also the exit statuses.
enum DriverStatus : std::int32_t {
    kInternalError1 = 1,  // memory exhausted
    kInternalError2 = 2,  // a trapped signal
    kInternalError3 = 3,
    kMissingInput = 4,
    kMissingInputName = 5,
    kMissingOutputName = 6,
    kUnknownParameter = 7,
    kTooManyInputs = 8,
    kCannotReadStdin = 9,
    kTooManyOutputs = 10,
    kCannotOpenOutput = 11,
    kInvalidOffset = 12,
    kInvalidCount = 13,
    kMissingPadByte = 14,
    kInvalidPadByte = 15,
};

// Prints the text of `status` (1 to 15) with `argument` where it has a place for one, without a
// line feed; behind 4 to 8 an empty line and the usage. Then unwinds with the status.
[[noreturn]] void fail(ZxqGlobal& context, DriverStatus status, const char* argument = "");

// The text of an internal error, 1 to 3.
const char* internalErrorText(std::int32_t status);

void printUsage(ZxqGlobal& context);
void printHelp(ZxqGlobal& context);

}  // namespace zxqtlv
