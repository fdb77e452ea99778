#include "cli/program.h"

#include <cstdio>
#include <ctime>

#include "cli/driver.h"
#include "cli/message_hook.h"
#include "cli/tool_table.h"
#include "runtime/context.h"
#include "runtime/flags.h"
#include "runtime/print.h"
#include "runtime/report.h"

namespace zxqtlv {
namespace {

int currentYear() {
    const std::time_t now = std::time(nullptr);
    const std::tm* const utc = std::gmtime(&now);
    return utc == nullptr ? 1970 : utc->tm_year + 1900;
}

void printBanner(ZxqGlobal& context, int year) {
    zxqprint(&context,
             "zxqtlv - prints BER encodings as tag-length-value triples, Version %s\n"
             "Copyright (C) %d the zxqtlv developers\n\n",
             ZXQTLV_VERSION, year);
}

// Standard output cannot carry the news of its own failure.
std::int32_t checkStandardOutput(std::int32_t status) {
    if (std::ferror(stdout) == 0) {
        return status;
    }
    static_cast<void>(std::fputs("Error writing to output file, stdout.\n", stderr));
    return status != 0 ? status : static_cast<std::int32_t>(kCannotWriteOutput);
}

}  // namespace

std::int32_t runProgram(int count, char* const* arguments) {
    const int year = currentYear();
    // Each print is flushed, so a buffer would only cut it into several writes.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    ZxqGlobal context{};
    if (const std::int32_t code = zxqinit(&context, &toolTable()); code != 0) {
        std::printf("Initialization failed with error %d.\n", code);
        return code;
    }
    printBanner(context, year);
    kxSetMessageHook(&context, &printMessage);
    context.flags |= TrapEnabled;
    const std::int32_t status = runDriver(context, count, arguments);
    context.flags &= ~static_cast<std::uint32_t>(TrapEnabled);
    zxqterm(&context);
    zxqprint(&context, "%s", "\n");
    return checkStandardOutput(status);
}

}  // namespace zxqtlv
