#include "cli/fix_outcome.h"

#include "cli/fix_runner.h"
#include "runtime/flags.h"
#include "runtime/kx_messages.h"
#include "runtime/print.h"

namespace zxqtlv {
namespace {

void printOutcome(ZxqGlobal& context, std::int32_t result, std::int32_t total,
                  const char* inputName, const char* fixedName) {
    if (result == kCannotOpenInput || result == kCannotReadInput) {
        zxqprint(&context, "\nError reading from input file: '%s'.", inputName);
    } else if (result == kCannotWriteOutput) {
        zxqprint(&context, "\nError writing to the output file: '%s'.", fixedName);
    } else if (total > 0) {
        const char* const format = result == 0
                                       ? "\nRecords were fixed and saved in file: '%s'."
                                         "\nThe total number of fixups was: '%d'."
                                       : "\nEncoding is partially fixed and saved in file: '%s'."
                                         "\nThe total number of fixups was: '%d'.";
        zxqprint(&context, format, fixedName, total);
    } else {
        zxqprint(&context, "\nEncoding is %s, no fixups were made, no output file was created.",
                 result == 0 ? "valid" : "invalid");
    }
}

}  // namespace

std::int32_t fixAndReport(ZxqGlobal& context, const char* inputName, const char* fixedName) {
    if ((context.flags & TextInput) != 0) {
        zxqprint(&context, "%s", "The '-text' is not supported with '-zfixencoding'.");
        return 0;
    }
    const std::int32_t result = runFix(context, inputName, fixedName);
    printOutcome(context, result, fixupCount(context), inputName, fixedName);
    return result;
}

}  // namespace zxqtlv
