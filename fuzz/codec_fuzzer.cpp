// Decodes and writes contents octets with every built-in type.

#include <array>

#include "codec/built_in_types.h"
#include "codec/real.h"
#include "contents/character_text.h"
#include "contents/contents_text.h"
#include "contents/tag_text.h"
#include "harness.h"

namespace zxqtlv::fuzz {
namespace {

std::string textOf(ZxqGlobal& context, const std::vector<std::uint8_t>& octets) {
    char* const text =
        formatContentsText(&context, octets.data(), static_cast<std::int32_t>(octets.size()));
    const std::string copy = text == nullptr ? "(none)" : text;
    freeText(&context, text);
    return copy;
}

void checkString(const std::vector<std::uint8_t>& octets) {
    const auto count = static_cast<std::int32_t>(octets.size());
    const StringContents contents{{octets.data(), count}, false, false, count, 0};
    for (const CharacterMode mode :
         {CharacterMode::Ia5, CharacterMode::Bmp, CharacterMode::Universal, CharacterMode::Utf8}) {
        const std::size_t size = measureCharacterString(contents, mode);
        std::string text(size + TextSink::kPiece, '#');
        TextSink sink = TextSink::into(text.data(), size);
        formatCharacterString(sink, contents, mode);
        require(sink.finish() == size, "a text is as long as it was measured");
        for (std::size_t i = 0; i < size; ++i) {
            require(text[i] >= ' ' && text[i] <= '~', "escaped text is printable");
        }
    }
}

}  // namespace
}  // namespace zxqtlv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zxqtlv;
    using namespace zxqtlv::fuzz;
    if (size < 2) {
        return 0;
    }
    CatchingContext catching;
    ZxqGlobal& context = catching.get();
    context.flags &= ~static_cast<std::uint32_t>(TrapEnabled);
    context.flags |= (data[0] & 0x40) != 0 ? SyntaxLayout : 0U;
    context.flags |= (data[0] & 0x80) != 0 ? NoAddition : 0U;
    const std::vector<std::uint8_t> contents(data + 1, data + size);
    checkString(contents);
    // The octets as the contents of each type, primitive and constructed, sound and cut.
    for (const unsigned form : {0x00U, 0x20U}) {
        for (std::uint8_t tag = 1; tag <= 36; ++tag) {
            std::vector<std::uint8_t> octets;
            if (tag < 31) {
                octets = {static_cast<std::uint8_t>(tag | form)};
            } else {
                octets = {static_cast<std::uint8_t>(0x1F | form), tag};
            }
            octets.insert(octets.end(), {0x82, static_cast<std::uint8_t>(contents.size() >> 8),
                                         static_cast<std::uint8_t>(contents.size())});
            octets.insert(octets.end(), contents.begin(), contents.end());
            octets.shrink_to_fit();
            const std::string text = textOf(context, octets);
            const bool invalid = (context.flags & InvalidContents) != 0;
            context.flags &= ~static_cast<std::uint32_t>(InvalidContents);
            require(textOf(context, octets) == text, "a text is the same every time");
            context.flags &= ~static_cast<std::uint32_t>(InvalidContents);
            require(!invalid || text == "(none)" ||
                        text.find_first_not_of("0123456789ABCDEF") == std::string::npos,
                    "invalid contents are shown in hexadecimal");
        }
    }
    return 0;
}
