// Whole runs of the driver while the machine fails: memory that runs out at any point, and a memory
// fault in the middle of a listing.

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

#include "cli/driver.h"
#include "cli/message_hook.h"
#include "cli/tool_table.h"
#include "fixture.h"
#include "runtime/flags.h"
#include "support/case_file.h"
#include "support/process.h"

namespace zxqtlv::test {
namespace {

// Nested, indefinite, unclosed, in segments, with contents of several types, and one repair.
const char* const kInput =
    "30 80 02 01 05 30 80 24 80 24 80 04 01 41 00 00 00 00 00 00 0C 02 C3 A9 00 00 "
    "30 03 17 01 58 04 00 82 FF*130 30 80 24 80 04 01 41";

std::int32_t runInside(TestContext& context, std::vector<std::string> arguments) {
    context.global.controlTable = &toolTable();
    arguments.insert(arguments.begin(), "zxqtlv");
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    context.global.flags |= TrapEnabled;
    const std::int32_t status =
        runDriver(context.global, static_cast<int>(pointers.size()), pointers.data());
    context.global.flags &= ~static_cast<std::uint32_t>(TrapEnabled);
    return status;
}

struct Outcome {
    std::int32_t status;
    std::string text;
    int refused;  // allocations
};

// A run that gets this many blocks of memory, or any number of them where that is negative.
Outcome runWithBlocks(int limit, const std::vector<std::string>& arguments) {
    TestContext context;
    kxSetMessageHook(&context.global, &printMessage);
    CountedDefaults::left = limit;
    const std::int32_t status = runInside(context, arguments);
    CountedDefaults::left = -1;
    return {status, context.takeText(), CountedDefaults::refused};
}

TEST(Faults, MemoryThatRunsOutAnywhereEndsTheRunCleanly) {
    const TemporaryFolder folder;
    std::string octets = octetsFromHex(kInput);
    // More levels than the first piece of memory for them holds, and a header that is cut.
    for (int level = 0; level < 70; ++level) {
        octets += std::string("\x30\x80", 2);
    }
    octets += "\x1F";
    writeFile(folder / "in", octets);
    writeFile(folder / "text", kInput + std::string(" 00"));
    writeFile(folder / "digits", "30 80 02 01 05 00 00");
    const std::string in = (folder / "in").string();
    const std::string fixed = (folder / "fixed").string();
    const std::string digits = (folder / "digits").string();
    const std::vector<std::string> runs[] = {
        {in, "-hex"},       {in, "-dec"},
        {in, "-syn"},       {in, "-dec", "-output", (folder / "out").string()},
        {"-text", digits},  {"-text", digits, "+2,4", "-dec"},
        {in, "-zf", fixed}, {in, "-zf", fixed, "-zn"},
    };
    for (const std::vector<std::string>& run : runs) {
        SCOPED_TRACE(run[0] + " " + run[1]);
        const Outcome whole = runWithBlocks(-1, run);
        bool complete = false;
        int limit = 0;
        for (; !complete && limit < 100; ++limit) {
            SCOPED_TRACE(limit);
            const auto [status, text, refused] = runWithBlocks(limit, run);
            complete = refused == 0;
            if (complete || status == whole.status) {
                // What the memory was for can be done without it, more slowly.
                EXPECT_EQ(text, whole.text);
                EXPECT_EQ(status, whole.status);
            } else if (status == 46) {
                EXPECT_NE(text.find("Error reading from input file"), std::string::npos);
            } else {
                EXPECT_EQ(status, 1);
                const bool repair = run[1] == "-zf";
                EXPECT_NE(text.find(repair ? "no output file was created." : "Internal error #1."),
                          std::string::npos)
                    << text;
            }
        }
        EXPECT_TRUE(complete);
        EXPECT_GT(limit, 2);
    }
}

std::uint32_t faultInHook(ZxqGlobal* /*context*/, std::uint32_t code, std::uintptr_t /*detail1*/,
                          std::int32_t /*detail2*/) {
    std::raise(SIGSEGV);
    return code;
}

TEST(Faults, AMemoryFaultInAListingLeavesTheContextUsable) {
    const TemporaryFolder folder;
    // Two sound lines, inside an indefinite triple, in front of the faulty one.
    writeFile(folder / "in", octetsFromHex("30 80 02 01 05 30 03 04 05 41 00 00"));
    const std::string in = (folder / "in").string();
    TestContext context;
    context.global.encodingFlags = 0;
    context.global.decodingFlags = 0;
    for (const char* const layout : {"-hex", "-dec", "-syn"}) {
        SCOPED_TRACE(layout);
        kxSetMessageHook(&context.global, &faultInHook);
        EXPECT_EQ(runInside(context, {in, layout}), 2);
        const std::string text = context.takeText();
        EXPECT_EQ(text.rfind("\nInternal error #2.\n\n"), text.size() - 21);
        EXPECT_NE(text.find(layout == std::string("-hex") ? "  02 01 05\n" : "INTEGER"),
                  std::string::npos);
        struct sigaction current {};
        sigaction(SIGSEGV, nullptr, &current);
        EXPECT_TRUE(current.sa_handler == SIG_DFL || (current.sa_flags & SA_SIGINFO) != 0);
        EXPECT_EQ(context.global.runtimePrivate->currentBuffer, nullptr);
        kxSetMessageHook(&context.global, &printMessage);
        EXPECT_EQ(runInside(context, {in, layout}), 0);
        EXPECT_NE(context.takeText().find("continuing as if length were 1:"), std::string::npos);
    }
}

}  // namespace
}  // namespace zxqtlv::test
