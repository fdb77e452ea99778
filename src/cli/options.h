// The command line.
//
// For: matching abbreviated options, reading their arguments, and setting the print options of the
// context on the way.
// Not for: files; names are only collected here.
//
//     zxqtlv -dec -pad 0xFF records.ber +128,64
#pragma once

#include <array>

#include "cli/loader.h"
#include "runtime/context.h"
#include "tlv/format.h"

namespace zxqtlv {

enum class NextStep { List, ShowUsage, Finish };

struct CommandLine {
    NextStep next = NextStep::ShowUsage;
    TlvFormat format = TlvFormat::None;
    bool binary = true;
    Slice slice;
    const char* inputName = nullptr;
    const char* outputName = nullptr;
    const char* fixedName = nullptr;        // where a repaired encoding goes
    std::array<char, 256> nameFromStdin{};  // what inputName points at then
};

// Reads the arguments behind the program name, left to right, into `line`, which must stay where
// it is. Sets flags and the pad setting of the context. Prints the help for "-help" and a notice
// for a second layout; fails with statuses 5 to 10 and 12 to 15, as cli/failure.h tells.
void parseCommandLine(ZxqGlobal& context, int count, char* const* arguments, CommandLine& line);

}  // namespace zxqtlv
