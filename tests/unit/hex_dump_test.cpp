#include "runtime/hex_dump.h"

#include "cli/layouts.h"
#include "cli/tool_table.h"
#include "contents/contents_text.h"
#include "contents/tag_text.h"
#include "support/case_file.h"
#include "unit/fixture.h"

namespace zxqtlv {
namespace {

using test::octetsFromHex;
using test::octetsOf;
using test::TestContext;

TEST(HexDump, HasTwoLayouts) {
    const std::string blanks(64, ' ');
    const auto wide = [&](int count) { return blanks.substr(0, static_cast<std::size_t>(count)); };
    const struct {
        std::uint32_t level;
        const char* octets;
        std::string text;
    } rows[] = {
        {1, "", ""},
        {1, "0A", "0A\n"},
        {1, "01 02 03 04", "01020304 \n"},
        {1, "01 02 03 04 05", "01020304 05\n"},
        {0x7F, "AB*31", "ABABABAB ABABABAB ABABABAB ABABABAB ABABABAB ABABABAB ABABABAB ABABAB\n"},
        {1, "AB*32", "ABABABAB ABABABAB ABABABAB ABABABAB ABABABAB ABABABAB ABABABAB ABABABAB\n"},
        {1, "AB*33",
         "ABABABAB ABABABAB ABABABAB ABABABAB ABABABAB ABABABAB ABABABAB ABABABAB\nAB\n"},
        {0x80, "", ""},
        {0x80, "30 03 02 01 05", "#   000000:   3003 0201 05" + wide(31) + "0....\n"},
        {0x81, "20 7E", "#   000000:   207E" + wide(39) + " ~\n"},
        {0x80, "41*15",
         "#   000000:   4141 4141 4141 4141 4141 4141 4141 41" + wide(6) + "AAAAAAAAAAAAAAA\n"},
        {0x80, "41*16",
         "#   000000:   4141 4141 4141 4141 4141 4141 4141 4141    AAAAAAAAAAAAAAAA\n"},
        {0xFF, "1F*15 7F 80",
         "#   000000:   1F1F 1F1F 1F1F 1F1F 1F1F 1F1F 1F1F 1F7F    ................\n"
         "#   000010:   80" +
             wide(41) + ".\n"},
    };
    TestContext context;
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.octets) + " at level " + std::to_string(row.level));
        const std::string octets = octetsFromHex(row.octets);
        EXPECT_EQ(zxqEnableTrace(&context.global, row.level), kSuccess);
        zxqPrintOctets(&context.global, octetsOf(octets), static_cast<std::int32_t>(octets.size()));
        EXPECT_EQ(context.takeText(), row.text);
    }
}

TEST(HexDump, CountsOffsetsInHexadecimal) {
    TestContext context;
    zxqEnableTrace(&context.global, 0x80);
    const std::string octets(0x100000 + 1, 'A');
    zxqPrintOctets(&context.global, octetsOf(octets), static_cast<std::int32_t>(octets.size()));
    const std::string text = context.takeText();
    EXPECT_EQ(text.size(), 0x10000 * 74 + 14 + 2 + 41 + 2U);
    EXPECT_EQ(text.substr(0xABC * 74, 14), "#   00abc0:   ");
    EXPECT_EQ(text.substr(0x10000 * 74, 16), "#   100000:   41");
}

TEST(HexDump, PrintsNothingOfNothing) {
    TestContext context;
    const std::uint8_t octet = 5;
    zxqPrintOctets(nullptr, &octet, 1);
    zxqPrintOctets(&context.global, nullptr, 1);
    zxqPrintOctets(&context.global, &octet, -1);
    EXPECT_EQ(context.takeText(), "");
    EXPECT_EQ(zxqEnableTrace(nullptr, 1), kNullArgument);
}

TEST(HexDump, ShowsEachEncodingThatIsDecoded) {
    TestContext context;
    context.global.controlTable = &toolTable();
    const struct {
        const char* octets;  // with octets behind the triple
        std::uint32_t level;
        const char* text;
    } rows[] = {
        {"02 01 05 FF", 1, "020105\n"},
        {"24 80 04 01 41 00 00 02 01", 1, "24800401 41000002 01\n"},  // all that remains
        {"04 05 41", 1, "040541\n"},                                  // decoding will fail
        {"04 82 41", 1, ""},  // does not fit, so it is not decoded
        {"80 01 05", 1, ""},  // of no built-in type
        {"02 01 05 FF", 0, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.octets);
        zxqEnableTrace(&context.global, row.level);
        const std::string octets = octetsFromHex(row.octets);
        freeText(&context.global, formatContentsText(&context.global, octetsOf(octets),
                                                     static_cast<std::int32_t>(octets.size())));
        EXPECT_EQ(context.takeText(), row.text);
    }
}

TEST(HexDump, TakesNoRoomFromTheTextOfTheLine) {
    TestContext context;
    context.global.controlTable = &toolTable();
    zxqEnableTrace(&context.global, 1);
    std::string octets = octetsFromHex("04 14 41*20");
    EncodedBuffer buffer{22, reinterpret_cast<std::uint8_t*>(octets.data())};
    const std::string dump = "04144141 41414141 41414141 41414141 41414141 4141\n";
    printLayout(context.global, TlvFormat::Decomposed, buffer);
    EXPECT_EQ(context.takeText(), "\n  0:d= 1 hl=2 l=  20 prim: OCTET STRING     " + dump +
                                      ":4141414141414141414141414141414...");
    printLayout(context.global, TlvFormat::Syntax, buffer);
    EXPECT_EQ(context.takeText(), "\nType         Length  Contents\nOCTET STRING 20      " + dump +
                                      "4141414141414141414141414141414141414141");
}

}  // namespace
}  // namespace zxqtlv
