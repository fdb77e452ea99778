#include "contents/tag_text.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>

#include "runtime/hex_text.h"
#include "runtime/memory.h"
#include "runtime/report.h"
#include "tlv/triple_walk.h"

namespace zxqtlv {
namespace {

// A universal tag without a name prints like a context-specific one.
constexpr std::array<std::string_view, 4> kClassPrefixes{"", "APPLICATION ", "", "PRIVATE "};

std::string_view writeBracketed(const TripleHeader& header, TagText& storage) {
    const std::string_view prefix = kClassPrefixes[static_cast<std::size_t>(header.tagClass)];
    char* out = storage.data();
    *out++ = '[';
    out = std::copy(prefix.begin(), prefix.end(), out);
    out = writeDecimal(out, header.tagNumber);
    *out++ = ']';
    std::fill(out, storage.data() + storage.size(), ' ');
    return {storage.data(), static_cast<std::size_t>(out - storage.data())};
}

// The octet behind the identifier octets, 0 where the data ends.
std::uint8_t secondOctet(OctetView triple) {
    return triple.remaining > 1 ? triple.position[1] : std::uint8_t{0};
}

OctetView clampedView(const std::uint8_t* octets, std::uint32_t remaining) {
    constexpr std::uint32_t kLargest = std::numeric_limits<std::int32_t>::max();
    return {octets, static_cast<std::int32_t>(std::min(remaining, kLargest))};
}

}  // namespace

std::string_view rareTagName(ZxqGlobal& context, OctetView triple, const TripleHeader& header,
                             TagText& storage) {
    if (triple.remaining <= 0 || tagNumber(context, triple, header) < 0) {
        return {};
    }
    if (header.tagClass == TagClass::Universal && header.tagNumber == 0) {
        if (secondOctet(triple) != 0) {
            kxReportError(&context, kEocSecondOctet);
            return {};
        }
        return {kNameFields[0].data(), kEndOfContentsName.size()};
    }
    return writeBracketed(header, storage);
}

char* formatTagText(ZxqGlobal* context, const std::uint8_t* identifier, std::uint32_t remaining) {
    const OctetView triple = clampedView(identifier, remaining);
    TagText storage;
    const std::string_view name =
        tagName(*context, triple, readHeader(triple, tagMask(*context)), storage);
    if (name.data() == nullptr) {
        return nullptr;
    }
    auto* const text = static_cast<char*>(contextAllocate(*context, name.size() + 1));
    if (text == nullptr) {
        kxReportError(context, kOutOfMemoryCode);
        return nullptr;
    }
    std::memcpy(text, name.data(), name.size());
    text[name.size()] = '\0';
    return text;
}

void freeText(ZxqGlobal* context, char* text) {
    contextRelease(*context, text);
}

TagClass getTagClass(ZxqGlobal* context, const std::uint8_t* tlv, std::uint32_t remaining,
                     std::int32_t index) {
    if (tlv == nullptr || remaining == 0) {
        return TagClass::Unknown;
    }
    if (index == 1) {
        return static_cast<TagClass>(tlv[0] >> 6);
    }
    std::int32_t met = 0;
    TripleWalk walk(*context, clampedView(tlv, remaining));
    for (bool more = index > 1; more;) {
        if (!walk.atEnd() && ++met == index) {
            return walk.header().tagClass;
        }
        more = walk.descend() || walk.advance() || walk.leave([](OctetView /*closing*/) {});
    }
    kxReportError(context, kBadTagIndex, 0, index);
    return TagClass::Unknown;
}

bool isConstructed(const std::uint8_t* tlv, std::uint32_t remaining) {
    return remaining != 0 && (tlv[0] & 0x20) != 0;
}

}  // namespace zxqtlv
