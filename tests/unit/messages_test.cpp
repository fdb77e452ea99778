#include <cstring>
#include <memory>
#include <set>
#include <string_view>

#include "runtime/flags.h"
#include "runtime/kx_messages.h"
#include "runtime/memory.h"
#include "runtime/report.h"
#include "runtime/runtime_message_table.h"
#include "runtime/runtime_messages.h"
#include "runtime/trap.h"
#include "unit/fixture.h"

namespace zxqtlv {
namespace {

using test::CountedDefaults;
using test::Message;
using test::TestContext;

using Codes = std::set<std::uint32_t>;

TEST(KxMessages, CarryTheirCodeAndSeverity) {
    const Codes withoutDetail{0,  1,  2,  3,  12, 15, 17, 20, 21, 23, 27, 31, 32,
                              36, 37, 50, 51, 52, 53, 54, 55, 56, 58, 59, 60, 61,
                              62, 63, 64, 65, 66, 67, 68, 69, 70, 71, 73};
    for (std::uint32_t code = 0; code < 78; ++code) {
        const bool severe = Codes{1, 2, 3, 12, 32}.contains(code);
        char prefix[16];
        std::snprintf(prefix, sizeof prefix, "KX%03u%c: ", code, severe ? 'S' : code ? 'E' : 'I');
        SCOPED_TRACE(prefix);
        const std::string detailed = kxMessageDetailed(code);
        const std::string brief = kxMessageBrief(code);
        EXPECT_EQ(detailed.substr(0, 8), prefix);
        EXPECT_EQ(brief.substr(0, 8), prefix);
        EXPECT_EQ(brief.find('%'), brief.npos);
        EXPECT_EQ(detailed == brief, withoutDetail.contains(code));
        EXPECT_EQ(detailed.find('%') == detailed.npos, withoutDetail.contains(code));
    }
    EXPECT_STREQ(kxMessageBrief(32), "KX032S: Invalid object handle");
    EXPECT_STREQ(kxMessageBrief(55), "KX055E: Invalid type handle of component. ");
    EXPECT_STREQ(kxMessageBrief(74), "KX074E: Constraint violation occurred.");
    EXPECT_STREQ(kxMessageDetailed(74), "KX074E: %s.");
    for (const std::uint32_t code : {78U, 79U, 0xFFFFFFFFU}) {
        EXPECT_EQ(kxMessageDetailed(code), nullptr);
        EXPECT_EQ(kxMessageBrief(code), nullptr);
    }
}

TEST(Report, GoesByTheClassOfTheCode) {
    const Codes internal{1, 2, 3};
    const Codes fatalInput{17, 45, 46, 47, 48};
    const Codes misencoding{18, 19, 21, 35, 36, 37, 38, 73, 74};
    const std::uint32_t bits[] = {0x40, 0x80, 0x800000, 0x1000000, 0x2000000};
    TestContext context;
    for (std::uint32_t round = 0; round < 78 * 64; ++round) {
        const std::uint32_t code = round / 64;
        const bool guarded = (round & 32) != 0;
        std::uint32_t flags = 0;
        for (std::uint32_t bit = 0; bit < 5; ++bit) {
            flags |= (round >> bit & 1) != 0 ? bits[bit] : 0;
        }
        SCOPED_TRACE(testing::Message() << code << " flags " << std::hex << flags << guarded);

        const bool premature = code == 17 && (flags & 0x2000000) != 0;
        const bool fatal = !premature && (internal.contains(code) || fatalInput.contains(code));
        const bool quiet = fatal || premature || misencoding.contains(code);
        const bool told = !internal.contains(code) && !(quiet && (flags & 0x80) != 0) &&
                          (flags & 0x1800000) != 0x800000;
        const bool unwinds = fatal && guarded && (flags & 0x40) != 0;

        context.global.flags = flags;
        std::uint32_t returned = 999;
        std::int32_t unwound = 0;
        auto raise = [&] { returned = kxReportError(&context.global, code, 12, -3); };
        if (guarded) {
            unwound = TrapGuard(context.global, GuardKind::Driver).run(raise);
        } else {
            raise();
        }
        EXPECT_EQ(returned, unwinds ? 999 : code);
        EXPECT_EQ(unwound, unwinds ? static_cast<std::int32_t>(code) : 0);
        EXPECT_EQ(kxLastError(&context.global), code);
        EXPECT_EQ(TestContext::takeMessages(), std::vector<Message>(told ? 1 : 0, {code, 12, -3}));
    }
    kxSetMessageHook(&context.global, nullptr);
    EXPECT_EQ(kxReportError(&context.global, 35), 35U);
    EXPECT_EQ(kxReportError(nullptr, 35), 6U);
}

TEST(RuntimeMessages, StandAtTheirIndexes) {
    int of61 = 0;
    for (std::uint32_t entry = 0; entry < 309; ++entry) {
        const std::string_view text = runtimeMessage(entry).text;
        SCOPED_TRACE(text);
        const std::size_t colon = text.find(": ");
        ASSERT_EQ(colon, entry == 185 ? 6U : 5U);
        EXPECT_NE(std::strchr("IES", text[colon - 1]), nullptr);
        EXPECT_EQ(text.find('%'), text.npos);
        of61 += text.substr(0, 5) == "0061S" ? 1 : 0;
    }
    EXPECT_EQ(of61, 7);
    const struct {
        std::uint32_t entry;
        const char* text;
        std::int32_t code;
    } rows[] = {
        {0, "0000I: No message", 0},
        {1, "0001S: Output buffer too small; total buffer size: ", 1},
        {4, "0006S: Unexpected NULL pointer as argument to encoder/decoder", 6},
        {6, "0008S: Out of memory; bytes requested: ", 8},
        {37, "0073S: Attempt made to pass a NULL control table pointer", 20},
        {51, "0100S: Unknown encoding rules were requested, use BER/DER/CER/PER/XER only", 22},
        {53, "0103S: The requested encoding rules were not linked: ", 23},
        {139, "0125I: End of input file detected; no PDU was decoded from: ", 85},
        {185, "E0178E: The number of bits is not multiple of eight in the bitstring's segment #",
         runtimeMessage(185).returnCode},
        {308, "X999I: Hindmost message", runtimeMessage(308).returnCode},
        {309, "X999I: Hindmost message", runtimeMessage(308).returnCode},
    };
    for (const auto& row : rows) {
        EXPECT_STREQ(runtimeMessage(row.entry).text, row.text);
        EXPECT_EQ(runtimeMessage(row.entry).returnCode, row.code);
    }
}

TEST(RuntimeMessages, AreFormattedWithTheirDetailAndPrintedForTheirDirection) {
    const long number = -4096;
    const struct {
        std::uint32_t entry;
        char operation;
        const void* detail;
        std::uint32_t encoding, decoding, trace;
        bool printed;
        const char* text;
    } rows[] = {
        {1, 'E', &number, 0x202, 0x200, 0, true,
         "E0001S: Output buffer too small; total buffer size: -4096.\n"},
        {1, 'D', nullptr, 0x202, 0x200, ~0x40U, false,
         "D0001S: Output buffer too small; total buffer size: .\n"},
        {6, 'E', &number, 0x200, 0x202, 0, false, "E0008S: Out of memory; bytes requested: .\n"},
        {53, 'D', "PER", 0x200, 0x202, 0, true,
         "D0103S: The requested encoding rules were not linked: 'PER'.\n"},
        {53, 'E', "%n%s", 0, 0, 0x40, true,
         "E0103S: The requested encoding rules were not linked: '%n%s'.\n"},
        {0, 'D', "PER", 0, 0, 0x40, true, "D0000I: No message.\n"},
    };
    TestContext context;
    ZxqGlobal* const global = &context.global;
    char* const buffer = global->messageBuffer.data();
    for (const auto& row : rows) {
        global->encodingFlags = row.encoding;
        global->decodingFlags = row.decoding;
        global->runtimePrivate->traceLevel = row.trace;
        const int blocks = CountedDefaults::blocks;
        global->runtimePrivate->scratchBlock = contextAllocate(*global, 10);
        EXPECT_EQ(zxqRuntimeError(global, buffer, row.entry, row.operation, row.detail),
                  runtimeMessage(row.entry).returnCode);
        EXPECT_STREQ(buffer, row.text);
        EXPECT_EQ(context.takeText(), row.printed ? row.text : "");
        EXPECT_EQ(CountedDefaults::blocks, blocks);
        EXPECT_EQ(zxqGetTraceLevel(global), row.trace);
    }
    EXPECT_EQ(zxqGetTraceLevel(nullptr), 0xFFFFFFFFU);
    EXPECT_EQ(zxqRuntimeError(nullptr, buffer, 1, 'E', nullptr), 6);
    EXPECT_EQ(zxqRuntimeError(global, nullptr, 1, 'E', nullptr), 6);

    for (std::size_t length = 400; length < 600; ++length) {
        SCOPED_TRACE(length);
        const auto heap = std::make_unique<char[]>(kMessageBufferSize);
        zxqRuntimeError(global, heap.get(), 53, 'E', std::string(length, 'x').c_str());
        std::string text = heap.get();
        EXPECT_EQ(text.substr(text.size() - 2), ".\n");
        EXPECT_TRUE(text.size() > 500 || std::erase(text, 'x') == length);
    }
}

TEST(ReturnCodes, AreDescribedWhateverTheyAre) {
    const std::string success = zxqDescribeReturnCode(0);
    EXPECT_EQ(success, "Success");
    EXPECT_EQ(std::string(zxqDescribeReturnCode(8)).rfind("Out of memory", 0), 0U);
    EXPECT_EQ(std::string(zxqDescribeReturnCode(27)).rfind("Unable to open trace file", 0), 0U);
    EXPECT_EQ(std::string(zxqDescribeReturnCode(46)).rfind("Unable to close trace file", 0), 0U);
    for (const std::uint32_t code : {1U, 6U, 999U, 0xFFFFFFFFU}) {
        ASSERT_NE(zxqDescribeReturnCode(code), nullptr);
        EXPECT_NE(zxqDescribeReturnCode(code), success);
    }
}

}  // namespace
}  // namespace zxqtlv
