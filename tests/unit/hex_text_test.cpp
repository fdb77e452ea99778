#include "runtime/hex_text.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace zxqtlv {
namespace {

std::string printed(const char* format, long value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

// The writers have paths of their own for small numbers, so the C library is asked around each.
TEST(NumberText, IsWhatTheCLibraryPrints) {
    for (const long base : {0L, 10L, 100L, 1000L, 10000L, 100000L, 2147483647L, 4999999999L}) {
        for (long value = base < 3 ? 0 : base - 3; value <= base + 3; ++value) {
            SCOPED_TRACE(value);
            std::array<char, 64> out{};
            EXPECT_EQ(std::string(out.data(), writeDecimal(out.data(), value)),
                      printed("%ld", value));
            EXPECT_EQ(std::string(out.data(), writeDecimal(out.data(), -value)),
                      printed("%ld", -value));
            EXPECT_EQ(std::string(out.data(), writePadded<1>(out.data(), value)),
                      printed("%ld", value));
            EXPECT_EQ(std::string(out.data(), writePadded<3>(out.data(), value)),
                      printed("%3ld", value));
            EXPECT_EQ(std::string(out.data(), writePadded<2>(out.data(), value)),
                      printed("%2ld", value));
            EXPECT_EQ(std::string(out.data(), writePadded<4>(out.data(), value)),
                      printed("%4ld", value));
        }
    }
}

TEST(NumberText, HexadecimalIsUpperCaseForOctetsAndLowerCaseForNumbers) {
    for (int octet = 0; octet < 256; ++octet) {
        std::array<char, 16> out{};
        EXPECT_EQ(
            std::string(out.data(), writeHexPair(out.data(), static_cast<std::uint8_t>(octet))),
            printed("%02lX", octet));
        EXPECT_EQ(
            std::string(out.data(),
                        writeLowerHex(out.data(), 0xFFFFFF00U + static_cast<std::uint32_t>(octet))),
            printed("%lx", 0xFFFFFF00L + octet));
    }
}

}  // namespace
}  // namespace zxqtlv
