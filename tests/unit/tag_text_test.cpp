#include "contents/tag_text.h"

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

TEST(TagText, NamesATagByClassAndNumber) {
    const struct {
        const char* octets;
        const char* name;    // null for no name
        std::uint32_t code;  // of the message, which is raised once
    } rows[] = {{"30 00", "SEQUENCE", 0},
                {"10 00", "SEQUENCE", 0},
                {"0B 00", "EMBEDDED PDV", 0},
                {"0F 00", "[15]", 0},
                {"1F 02 00", "INTEGER", 0},
                {"1F 24 00", "RELATIVE-OID-IRI", 0},
                {"1F 28 00", "[40]", 0},
                {"43 00", "[APPLICATION 3]", 0},
                {"C7 00", "[PRIVATE 7]", 0},
                {"A0 00", "[0]", 0},
                {"80 05", "[0]", 0},
                {"9F 81 00 00", "[128]", 0},
                {"5F FF FF FF FF FF FF FF FF 7F 00", "[APPLICATION 9223372036854775807]", 0},
                {"DF 81*20 7F 00", "[PRIVATE 9223372036854775807]", 0},
                {"00 00", "END-OF-CONTENTS", 0},
                {"00", "END-OF-CONTENTS", 0},
                {"1F 00 05", "END-OF-CONTENTS", 0},
                {"00 05", nullptr, 37},
                {"1F 80 00 00", nullptr, 37},
                {"1F", nullptr, 17},
                {"9F 81", nullptr, 17},
                {"", nullptr, 0}};
    TestContext context;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.octets);
        const std::string octets = octetsFromHex(row.octets);
        const OctetView triple{octetsOf(octets), static_cast<std::int32_t>(octets.size())};
        TagText storage;
        const std::string_view name =
            tagName(context.global, triple, readHeader(triple, kBerTagMask), storage);
        EXPECT_EQ(name.data() != nullptr, row.name != nullptr);
        EXPECT_EQ(name, row.name != nullptr ? row.name : "");
        const std::vector<Message> messages = TestContext::takeMessages();
        ASSERT_EQ(messages.size(), row.code != 0 ? 1U : 0U);
        EXPECT_EQ(messages.empty() ? 0 : messages[0].code, row.code);

        char* const text = formatTagText(&context.global, octetsOf(octets),
                                         static_cast<std::uint32_t>(octets.size()));
        EXPECT_STREQ(text, row.name);
        EXPECT_EQ(TestContext::takeMessages(), messages);
        freeText(&context.global, text);
    }
}

TEST(TagText, HasNoNameWhenMemoryIsExhausted) {
    TestContext context;
    CountedDefaults::left = 0;
    for (const char* const octets : {"\x30", "\xA0"}) {
        EXPECT_EQ(formatTagText(&context.global, octetsOf(octets), 1), nullptr);
        EXPECT_EQ(context.global.runtimePrivate->lastError, kOutOfMemoryCode);
    }
}

TEST(TagText, FindsTheClassOfAnyIdentifier) {
    const struct {
        const char* octets;
        const char* classes;  // of identifiers 1, 2, ...: Universal, Application, Context, Private
    } rows[] = {{"02 01 05", "U"},
                {"1F", "U"},
                {"41", "A"},
                {"9F 81", "C"},
                {"FF 81 00 00", "P"},
                {"30 06 82 01 41 C3 01 42", "UCP"},
                {"30 80 A1 80 04 00 00 00 41 00 00 00", "UCUA"},
                {"30 05 A1 03 41 01 00 C0 00 80 00", "UCAPC"},
                {"30 00 41 00", "UA"},
                {"24 80 00 00 C0 00", "UP"},
                {"30 88 7F FF FF FF", "U"}};
    TestContext context;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.octets);
        const std::string octets = octetsFromHex(row.octets);
        const auto remaining = static_cast<std::uint32_t>(octets.size());
        std::int32_t index = 0;
        for (const char expected : std::string(row.classes) + '-') {
            const TagClass found =
                getTagClass(&context.global, octetsOf(octets), remaining, ++index);
            EXPECT_EQ("UACP-"[static_cast<int>(found)], expected);
        }
        // A header that cannot be read is told first.
        EXPECT_EQ(TestContext::takeMessages().back(), (Message{19, 0, index}));
        for (const std::int32_t bad : {0, -1}) {
            EXPECT_EQ(getTagClass(&context.global, octetsOf(octets), remaining, bad),
                      TagClass::Unknown);
            EXPECT_EQ(TestContext::takeMessages(), (std::vector<Message>{{19, 0, bad}}));
        }
        EXPECT_EQ(isConstructed(octetsOf(octets), 1), (octets[0] & 0x20) != 0);
        EXPECT_FALSE(isConstructed(octetsOf(octets), 0));
        EXPECT_EQ(getTagClass(&context.global, octetsOf(octets), 0, 1), TagClass::Unknown);
        EXPECT_EQ(getTagClass(&context.global, nullptr, remaining, 1), TagClass::Unknown);
        EXPECT_TRUE(TestContext::takeMessages().empty());
    }
}

}  // namespace
}  // namespace zxqtlv
