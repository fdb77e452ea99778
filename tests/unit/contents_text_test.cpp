#include "contents/contents_text.h"

#include "cli/tool_table.h"
#include "contents/character_text.h"
#include "contents/tag_text.h"
#include "contents/time_text.h"
#include "runtime/flags.h"
#include "runtime/kx_messages.h"
#include "support/case_file.h"
#include "unit/fixture.h"

namespace zxqtlv {
namespace {

using test::CountedDefaults;
using test::Message;
using test::octetsFromHex;
using test::octetsOf;
using test::TestContext;

TEST(ContentsText, IsTheWholeTextOfATriple) {
    const std::string manyAs(5000, 'A');
    std::string manyPairs;
    for (int i = 0; i < 5000; ++i) {
        manyPairs += "41";
    }
    const struct {
        const char* octets;
        std::uint32_t flags;
        const char* text;      // null for none
        std::uint32_t code;    // of the message, which is raised once
        bool invalid = false;  // the text is a substitute
    } rows[] = {
        {"02 01 05", 0, "5 (0x05)", 0},
        {"02 01 05", NoAddition, "5", 0},
        {"05 00", 0, "NULL", 0},
        {"0C 00", 0, "", 0},
        {"06 02 2A 03", 0, "1 2 3", 0},
        {"06 02 2A 03", SyntaxLayout, "{ 1 2 3 }", 0},
        {"17 0B 3234303130323033303456 5A", 0, "3234303130323033303456", 0, true},
        {"17 0B 323430313032303330345A", 0, "240102030400Z", 0},
        // Segments, nested and empty ones among them, are one text, if the last is whole.
        {"24 0E 04 01 41 24 80 04 01 42 04 00 00 00 04 01", 0, "0401412480040142040000000401", 0,
         true},
        {"24 0E 04 01 41 24 80 04 01 42 04 00 00 00 04 00", 0, "4142", 0},
        {"2C 80 04 01 C3 24 80 04 01 A9 04 00 00 00 04 01 5C 00 00", 0, "\\U000000e9\\\\", 0},
        {"23 80 03 02 00 AA 23 80 03 02 04 F0 00 00 00 00", 0, "04AAF0", 0},
        {"24 80 04 01 41", 0, "040141", 0, true},
        {"0C 82 13 88 41*5000", 0, manyAs.c_str(), 0},
        {"04 82 13 88 41*5000", 0, manyPairs.c_str(), 0},
        {"44 82 13 88 41*5000", 0, manyPairs.c_str(), 0},
        {"80 00", 0, nullptr, 0},
        {"01 02 00 00", 0, "0000", 0, true},
        {"04 05 41", 0, "41", 0, true},
        {"04", 0, nullptr, 0},
        {"", 0, nullptr, 17},
    };
    TestContext context;
    context.global.controlTable = &toolTable();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.octets);
        const std::string octets = octetsFromHex(row.octets);
        context.global.flags = row.flags;
        char* const text = formatContentsText(&context.global, octetsOf(octets),
                                              static_cast<std::int32_t>(octets.size()));
        if (row.text == nullptr) {
            EXPECT_EQ(text, nullptr);
        } else {
            EXPECT_STREQ(text, row.text);
        }
        EXPECT_EQ((context.global.flags & InvalidContents) != 0, row.invalid);
        const std::vector<Message> messages = TestContext::takeMessages();
        ASSERT_EQ(messages.size(), row.code != 0 ? 1U : 0U);
        EXPECT_EQ(messages.empty() ? 0 : messages[0].code, row.code);
        freeText(&context.global, text);
    }
    EXPECT_EQ(formatContentsText(&context.global, nullptr, 5), nullptr);
    EXPECT_EQ(TestContext::takeMessages().size(), 1U);
}

TEST(ContentsText, HasNoTextWhenMemoryIsExhausted) {
    TestContext context;
    context.global.controlTable = &toolTable();
    const std::string octets = octetsFromHex("02 01 05");
    CountedDefaults::left = 0;
    EXPECT_EQ(formatContentsText(&context.global, octetsOf(octets), 3), nullptr);
    EXPECT_EQ(context.global.runtimePrivate->lastError, kOutOfMemoryCode);
    context.global.runtimePrivate->lastError = 0;
    EXPECT_EQ(contentsToHex(&context.global, octetsOf(octets), 3), nullptr);
    EXPECT_EQ(context.global.runtimePrivate->lastError, kOutOfMemoryCode);
    CountedDefaults::left = -1;
    char* const text = contentsToHex(&context.global, octetsOf(octets), 3);
    EXPECT_STREQ(text, "020105");
    freeText(&context.global, text);
}

TEST(CharacterText, IsMeasuredWithoutBeingWritten) {
    const struct {
        const char* octets;
        CharacterMode mode;
        std::size_t characters;
    } rows[] = {
        {"41 5C 09 7F", CharacterMode::Ia5, 1 + 2 + 4 + 4},
        {"00 41 00 5C 20 AC", CharacterMode::Bmp, 1 + 2 + 6},
        {"00 00 00 41 00 01 F6 00", CharacterMode::Universal, 1 + 10},
        {"41 C3 A9 F0 9F 98 80 5C 00 41", CharacterMode::Utf8, 1 + 10 + 10 + 2},
        {"09*5000", CharacterMode::Ia5, 20000},
        {"", CharacterMode::Utf8, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.octets);
        const std::string octets = octetsFromHex(row.octets);
        const auto count = static_cast<std::int32_t>(octets.size());
        const StringContents contents{{octetsOf(octets), count}, false, false, count, 0};
        EXPECT_EQ(measureCharacterString(contents, row.mode), row.characters);
    }
}

TEST(TimeText, MayStandBetweenQuotes) {
    TimeRecord time{2024, 1, 2, 3, 4, 5, 678, -330, false};
    char text[kTimeText];
    EXPECT_EQ(formatQuotedTimeText(time, text, false), 0U);
    EXPECT_STREQ(text, "\"20240102030405.678-0530\"");
    EXPECT_EQ(formatQuotedTimeText(time, text, true), 0U);
    EXPECT_STREQ(text, "\"240102030405-0530\"");
    time.month = 13;
    EXPECT_EQ(formatQuotedTimeText(time, text, false), 7U);
}

}  // namespace
}  // namespace zxqtlv
