#include "cli/hex_input.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/case_file.h"

namespace zxqtlv {
namespace {

TEST(HexInput, ConvertsPairsUntilAForeignCharacter) {
    const struct {
        std::string_view text;
        const char* octets;
        bool clean;
    } rows[] = {{"30 03 02 01 05", "30 03 02 01 05", true},
                {"\t3\n0\v0\f3\r 0 2 ", "30 03 02", true},
                {"aBcDeF09", "AB CD EF 09", true},
                {"ABC", "AB C0", true},
                {"", "", true},
                {"3003020X", "30 03 02 00", false},
                {"30 4", "30 40", true},
                {"30 4 X", "30 40", false},
                {"X3", "", false},
                {"3X", "", false},
                {"30 g0", "30", false},
                {"30 /0", "30", false},
                {"30 `0", "30", false},
                {std::string_view("30 \0 30", 7), "30", false},
                {"30 \x08", "30", false},
                {"30 \x0E", "30", false},
                {"30 \xA0", "30", false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        // Exactly the room that is asked for, so that one octet too many is caught.
        const auto out = std::make_unique<std::uint8_t[]>((row.text.size() + 1) / 2);
        const HexConversion conversion = convertHexText(row.text, out.get());
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(out.get()), conversion.octets),
                  test::octetsFromHex(row.octets));
        EXPECT_EQ(conversion.clean, row.clean);
    }
}

}  // namespace
}  // namespace zxqtlv
