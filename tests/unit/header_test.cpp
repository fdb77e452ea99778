#include "tlv/header.h"

#include <gtest/gtest.h>

#include "support/case_file.h"
#include "unit/fixture.h"

namespace zxqtlv {
namespace {

TripleHeader readHex(const std::string& octets) {
    return readHeader({reinterpret_cast<const std::uint8_t*>(octets.data()),
                       static_cast<std::int32_t>(octets.size())},
                      kBerTagMask);
}

struct HeaderRow {
    const char* octets;
    std::int32_t identifierOctets;
    std::int32_t headerOctets;
    std::int32_t length;
    std::int64_t tagNumber;
    int faults;
};

TEST(Header, IsReadWithItsLimitsAndFaults) {
    const HeaderRow rows[] = {
        {"02 01 05", 1, 2, 1, 2, 0},
        {"1F 81 00 01 05", 3, 4, 1, 128, 0},
        {"9F 80 80 01 00", 4, 5, 0, 1, 0},
        {"30 80", 1, 2, kIndefinite, 16, 0},
        {"04 81 02 41 42", 1, 3, 2, 4, 0},
        {"04 83 00 00 01 41", 1, 5, 1, 4, 0},
        {"04 84 7F FF FF FF", 1, 6, kLargestLength, 4, 0},
        {"04 84 80 00 00 00", 1, 6, kLargestLength, 4, 0},
        {"04 85 01 00 00 00 00", 1, 7, kLargestLength, 4, 0},
        {"04 FF FF FF FF FF", 1, 129, kLargestLength, 4, HeaderTooLong},
        {"04 84 FF FF FF", 1, 6, kUnreadable, 4, HeaderTooLong | LengthCut},
        {"04 82", 1, 4, kUnreadable, 4, HeaderTooLong | LengthCut},
        {"04 82 01", 1, 4, kUnreadable, 4, HeaderTooLong | LengthCut},
        {"04", kUnreadable, kUnreadable, kUnreadable, 4, LengthMissing},
        {"1F 05", kUnreadable, kUnreadable, kUnreadable, 5, LengthMissing},
        {"1F 81", kUnreadable, kUnreadable, kUnreadable, -1, TagCut},
        {"1F", kUnreadable, kUnreadable, kUnreadable, -1, TagCut},
        {"", kUnreadable, kUnreadable, kUnreadable, -1, TagCut},
        {"1F FF FF FF FF FF FF FF FF 7F 00", 10, 11, 0, 0x7FFFFFFFFFFFFFFF, 0},
        {"1F 83 FF FF FF FF FF FF FF FF FF 7F 00", 12, 13, 0, 0x7FFFFFFFFFFFFFFF, 0},
    };
    for (const HeaderRow& row : rows) {
        SCOPED_TRACE(row.octets);
        const std::string octets = test::octetsFromHex(row.octets);
        const TripleHeader header = readHex(octets);
        EXPECT_EQ(header.identifierOctets, row.identifierOctets);
        EXPECT_EQ(header.headerOctets, row.headerOctets);
        EXPECT_EQ(header.length, row.length);
        EXPECT_EQ(header.tagNumber, row.tagNumber);
        EXPECT_EQ(header.faults, row.faults);
    }
}

TEST(Header, HasServicesThatReadItInPieces) {
    test::TestContext context;
    const struct {
        const char* octets;
        std::int32_t identifierOctets;
        std::int32_t length;       // of the contents
        std::int32_t left;         // octets behind the header
        const char* lengthOctets;  // where the identifier octets can be read
    } rows[] = {
        {"02 01 05", 1, 1, 1, "01 05"},
        {"1F 81 00 82 01 00 41", 3, 256, 1, "82 01 00 41"},
        {"30 80 00", 1, kIndefinite, 1, "80 00"},
        {"04 82 01", 1, kUnreadable, 0, "82 01"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.octets);
        const std::string octets = test::octetsFromHex(row.octets);
        OctetView place{reinterpret_cast<const std::uint8_t*>(octets.data()),
                        static_cast<std::int32_t>(octets.size())};
        EXPECT_EQ(identifierLength(context.global, place), row.identifierOctets);
        const std::string rest = test::octetsFromHex(row.lengthOctets);
        ASSERT_EQ(place.remaining, static_cast<std::int32_t>(rest.size()));
        EXPECT_EQ(decodeLengthOctets(place), row.length);
        if (row.length != kUnreadable) {
            EXPECT_EQ(place.remaining, row.left);
        }
    }
    const std::string cut = test::octetsFromHex("1F 81");
    OctetView place{reinterpret_cast<const std::uint8_t*>(cut.data()), 2};
    EXPECT_EQ(identifierLength(context.global, place), kUnreadable);
    EXPECT_EQ(place.remaining, 2);
}

}  // namespace
}  // namespace zxqtlv
