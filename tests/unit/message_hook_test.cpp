#include "cli/message_hook.h"

#include <numeric>

#include "runtime/flags.h"
#include "runtime/kx_messages.h"
#include "unit/fixture.h"

namespace zxqtlv {
namespace {

using test::TestContext;

std::uintptr_t detail(const char* text) {
    return reinterpret_cast<std::uintptr_t>(text);
}

TEST(MessageHook, FramesEveryCodeByItsKind) {
    TestContext context;
    for (const std::uint32_t trap : {0U, static_cast<std::uint32_t>(TrapEnabled)}) {
        context.global.flags = trap;
        for (std::uint32_t code = 0; code < 78; ++code) {
            SCOPED_TRACE(code);
            const bool ownEnd = code == 36 || code == 37 || code == 73;
            const bool misencoding =
                ownEnd || code == 17 || code == 18 || code == 19 || code == 35 || code == 38;
            const std::string text = kxMessageBrief(code);
            EXPECT_EQ(printMessage(&context.global, code, 0, 0), code);
            std::string expected(misencoding ? "\n" : "");
            expected += text.substr(trap != 0 ? 8 : 0);
            expected += ownEnd ? "" : "\n";
            EXPECT_EQ(context.takeText(), expected);
        }
        EXPECT_EQ(printMessage(&context.global, 78, 0, 5), 78U);
        EXPECT_EQ(context.takeText(), "");
    }
}

TEST(MessageHook, FillsInDetailsByCode) {
    const std::string x30(30, 'x');
    const std::string x31(31, 'x');
    const std::string x72(72, 'x');
    const std::string x100(100, 'x');
    const std::string longName = x100 + "#";
    const std::string inSet = "in SET or SEQUENCE value notation";
    const struct {
        std::uint32_t code;
        std::uintptr_t detail1;
        std::int32_t detail2;
        std::string text;
    } rows[] = {
        {19, 0, 7, "\nBad tag number index into encoded value, 7.\n"},
        {47, 0, -1, "Invalid offset into input file, -1.\n"},
        {35, 5, 2,
         "\nValue misencoded, length, 5 (0x5), longer than remaining data length, 2 (0x2); "
         "continuing as if length were 2:\n"},
        {35, 2147483647, -4,
         "\nValue misencoded, length, 2147483647 (0x7fffffff), longer than remaining data length, "
         "-4 (0xfffffffc); continuing as if length were -4:\n"},
        {38, 129, 0,
         "\nValue misencoded, length of a tag-length pair, 129 (0x81), longer than remaining data "
         "length, 0 (0):\n"},
        {16, detail("E0008S: Out of memory.\n"), 0,
         "Error in encoding the value: Out of memory.\n"},
        {16, detail(""), 0, "Error in encoding the value: \n"},
        {74, detail("100%s %n"), 0, "100%s %n.\n"},
        {74, detail(x100.c_str()), 0, x100 + ".\n"},
        {18, detail("why"), 0, "\nContents of value misencoded: why\n"},
        {20, detail("why"), 0, "Incorrect type handle.\n"},
        {45, detail("100%s%n.ber"), 0, "Input file cannot be open, 100%s%n.ber.\n"},
        {45, detail("name.ber"), 4, "Input file cannot be open, name.\n"},
        {45, detail(x30.c_str()), 0, "Input file cannot be open, " + x30 + ".\n"},
        {46, detail(x31.c_str()), 0, "Error reading from input file, \n" + x31 + ".\n"},
        {72, detail(x100.c_str()), 0, "Error writing to output file, \n" + x72 + ".\n"},
        {40, detail("a"), 0,
         "Invalid CharacterStringList value or value for a control character: \na.\n"},
        {43, detail("a"), 0,
         "Missing type reference name in ANY or open type value notation: \na.\n"},
        {41, detail("name#5"), 0, "Missing mandatory component 'name' " + inSet + ": \n5\n"},
        {41, detail("name#\n5"), 0, "Missing mandatory component 'name' " + inSet + ": \n5\n"},
        {41, detail("name#"), 0, "Missing mandatory component 'name' " + inSet + ".\n"},
        {42, detail("#5#%s"), 0, "Missing identifier " + inSet + ": \n5#%s\n"},
        {42, detail(longName.c_str()), 0, "Missing identifier '" + x72 + "' " + inSet + ".\n"},
    };
    TestContext context;
    context.global.flags = TrapEnabled;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(printMessage(&context.global, row.code, row.detail1, row.detail2), row.code);
        EXPECT_EQ(context.takeText(), row.text);
    }
}

TEST(MessageHook, ShowsTheRecordThatEndsTooEarly) {
    const struct {
        std::int32_t length, position, stopPoint, detail2;
        std::size_t shown;
        bool dots;
    } rows[] = {
        {60, 50, 0, 10, 10, false},  {60, 10, 0, 50, 38, true},  {40, 1, 0, 39, 38, true},
        {40, 2, 0, 38, 38, false},   {40, 3, 0, 37, 37, false},  {40, 39, 0, 1, 1, false},
        {40, 0, 0, 40, 0, false},    {40, 40, 0, 5, 0, false},   {40, 30, 0, 0, 0, false},
        {40, 10, 16, 30, 14, false}, {40, 23, 16, 17, 1, false}, {40, 24, 16, 16, 16, false},
        {40, 30, 16, 4, 4, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        TestContext context;
        std::string octets(static_cast<std::size_t>(row.length), '\0');
        std::iota(octets.begin(), octets.end(), 'A');
        const auto* const start = reinterpret_cast<const std::uint8_t*>(octets.data());
        const CurrentBuffer buffer{row.length, start};
        context.global.runtimePrivate->currentBuffer = &buffer;
        context.global.runtimePrivate->stopPoint = row.stopPoint;
        const std::string brief = std::string("\n") + kxMessageBrief(17);
        std::string dump;
        if (row.shown != 0) {
            std::string pairs(2 * row.shown, '\0');
            writeHexPairs(pairs.data(), start + row.position, row.shown);
            dump = " Last invalid record is:\n" + pairs + (row.dots ? "..." : "");
        }
        const auto position = reinterpret_cast<std::uintptr_t>(start + row.position);
        printMessage(&context.global, 17, position, row.detail2);
        EXPECT_EQ(context.takeText(), brief + dump + "\n");
        context.global.runtimePrivate->currentBuffer = nullptr;
        printMessage(&context.global, 17, position, row.detail2);
        EXPECT_EQ(context.takeText(), brief + "\n");
    }
}

}  // namespace
}  // namespace zxqtlv
