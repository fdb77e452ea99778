#include "tlv/header.h"

#include <limits>

#include "runtime/report.h"

namespace zxqtlv {
namespace {

constexpr std::uint8_t kConstructed = 0x20;
constexpr std::uint8_t kMore = 0x80;  // another tag octet follows, or the long form of a length
constexpr std::uint8_t kIndefiniteOctet = 0x80;
constexpr std::uint8_t kSixBitTagMask = 0x3F;

struct Identifier {
    std::int32_t octets;  // kUnreadable when the data ends inside
    std::int64_t tagNumber;
};

// X.690, 8.1.2. At least one octet remains.
Identifier readIdentifier(OctetView triple, std::uint8_t mask) {
    const std::uint8_t first = triple.position[0];
    if ((first & mask) != mask) {
        return {1, first & mask};
    }
    constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
    std::int64_t number = 0;
    for (std::int32_t i = 1; i < triple.remaining; ++i) {
        const std::uint8_t octet = triple.position[i];
        number = number > (kLargest >> 7) ? kLargest : number * 128 + (octet & 0x7F);
        if ((octet & kMore) == 0) {
            return {i + 1, number};
        }
    }
    return {kUnreadable, -1};
}

}  // namespace

std::uint8_t tagMask(const ZxqGlobal& context) {
    return context.encodingRules == 9 || context.encodingRules == 10 ? kSixBitTagMask : kBerTagMask;
}

void readLongHeader(TripleHeader& header, OctetView triple, std::uint8_t mask) {
    header = {-1, kUnreadable, kUnreadable, kUnreadable, TagClass::Unknown, false, false, TagCut};
    if (triple.remaining <= 0) {
        return;
    }
    const std::uint8_t first = triple.position[0];
    header.tagClass = static_cast<TagClass>(first >> 6);
    header.constructed = (first & kConstructed) != 0;
    const Identifier identifier = readIdentifier(triple, mask);
    if (identifier.octets == kUnreadable) {
        return;
    }
    header.tagNumber = identifier.tagNumber;
    if (identifier.octets >= triple.remaining) {
        header.faults = LengthMissing;
        return;
    }
    OctetView octets = triple.from(identifier.octets);
    const std::uint8_t firstLength = octets.position[0];
    header.identifierOctets = identifier.octets;
    header.longForm = firstLength > kIndefiniteOctet;
    header.headerOctets = identifier.octets + 1 + (header.longForm ? firstLength & ~kMore : 0);
    header.length = decodeLengthOctets(octets);
    header.faults = 0;
    if (header.headerOctets > triple.remaining) {
        header.faults = HeaderTooLong;
    }
    if (header.length == kUnreadable) {
        header.faults |= LengthCut;
    }
}

std::int32_t identifierLength(const ZxqGlobal& context, OctetView& triple) {
    const TripleHeader header = readHeader(triple, tagMask(context));
    if (header.identifierOctets > 0) {
        triple = triple.from(header.identifierOctets);
    }
    return header.identifierOctets;
}

std::int32_t decodeLengthOctets(OctetView& octets) {
    if (octets.remaining <= 0) {
        return kUnreadable;
    }
    const std::uint8_t first = octets.position[0];
    octets = octets.from(1);
    if (first == kIndefiniteOctet) {
        return kIndefinite;
    }
    if ((first & kMore) == 0) {
        return first;
    }
    std::int64_t value = 0;
    for (int left = first & ~kMore; left > 0; --left) {
        if (octets.remaining <= 0) {
            return kUnreadable;
        }
        value = value * 256 + octets.position[0];
        octets = octets.from(1);
        // Ends here, so that a header longer than the data may still have a length.
        if (value >= kLargestLength) {
            return kLargestLength;
        }
    }
    return static_cast<std::int32_t>(value);
}

std::int32_t headerLength(ZxqGlobal& context, OctetView triple, const TripleHeader& header) {
    if (triple.remaining <= 0) {
        return 0;
    }
    if (header.headerOctets == kUnreadable) {
        reportPrematureEnd(context, triple);
    } else if (header.has(HeaderTooLong)) {
        reportHeaderTooLong(context, triple, header);
    }
    return header.headerOctets;
}

std::int32_t lengthChecked(ZxqGlobal& context, OctetView triple, const TripleHeader& header) {
    if (header.headerOctets == kUnreadable) {
        return kUnreadable;
    }
    if (header.has(HeaderTooLong)) {
        return 0;
    }
    if (header.exceeds(triple.remaining)) {
        reportLengthTooLong(context, triple, header);
    }
    return header.length;
}

void reportPrematureEnd(ZxqGlobal& context, OctetView triple) {
    kxReportError(&context, kPrematureEnd, reinterpret_cast<std::uintptr_t>(triple.position),
                  triple.remaining);
}

void reportHeaderTooLong(ZxqGlobal& context, OctetView triple, const TripleHeader& header) {
    kxReportError(&context, kHeaderTooLong, static_cast<std::uintptr_t>(header.headerOctets),
                  triple.remaining);
}

void reportLengthTooLong(ZxqGlobal& context, OctetView triple, const TripleHeader& header) {
    kxReportError(&context, kLengthTooLong, static_cast<std::uintptr_t>(header.length),
                  triple.remaining - header.headerOctets);
}

std::int64_t tagNumber(ZxqGlobal& context, OctetView triple, const TripleHeader& header) {
    if (header.has(TagCut)) {
        reportPrematureEnd(context, triple);
    }
    return header.tagNumber;
}

}  // namespace zxqtlv
