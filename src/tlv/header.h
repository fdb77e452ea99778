// The header rules: identifier and length octets (X.690, 8.1.2 and 8.1.3).
//
// For: decoding the header of a triple, once, into the plain record `TripleHeader`, and raising
// the messages that its faults call for. The walkers and the printers work on the record.
// Not for: where a triple ends (tlv/triple_walk.h), names of tags (contents/tag_text.h).
//
//     const TripleHeader header = readHeader({octets, 5}, kBerTagMask);  // 30 03 02 01 05
//     header.headerOctets;  // 2
//     header.length;        // 3
#pragma once

#include <algorithm>
#include <cstdint>

#include "runtime/context.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// Lengths are octet counts from 0; these two are not.
inline constexpr std::int32_t kIndefinite = -1;
inline constexpr std::int32_t kUnreadable = -2;
// A length that does not fit is held as this one.
inline constexpr std::int32_t kLargestLength = 0x7FFFFFFF;

// The tag bits of the first identifier octet; all set means the high-tag-number form.
inline constexpr std::uint8_t kBerTagMask = 0x1F;

enum class TagClass : std::uint8_t { Universal, Application, ContextSpecific, Private, Unknown };

// What is wrong with a header; none of these for a sound one.
enum HeaderFault : std::uint8_t {
    TagCut = 1,         // the data ends inside the identifier octets
    LengthMissing = 2,  // no length octet follows the identifier octets
    LengthCut = 4,      // the data ends inside the length octets
    HeaderTooLong = 8,  // the header is longer than the data
};

struct TripleHeader {
    std::int64_t tagNumber;         // saturates; -1 when TagCut
    std::int32_t identifierOctets;  // kUnreadable when TagCut or LengthMissing
    std::int32_t headerOctets;      // kUnreadable likewise; may exceed the data
    std::int32_t length;            // of the contents as declared, kIndefinite or kUnreadable
    TagClass tagClass;
    bool constructed;
    bool longForm;  // the first length octet has bit 8 set and is not 80
    std::uint8_t faults;

    bool has(HeaderFault fault) const { return (faults & fault) != 0; }
    bool isIndefinite() const { return length == kIndefinite; }
    // The header lies inside `remaining` octets.
    bool fits(std::int32_t remaining) const {
        return headerOctets > 0 && headerOctets <= remaining;
    }
    // A definite length that runs past the data.
    bool exceeds(std::int32_t remaining) const { return length > remaining - headerOctets; }
    // A definite length cut to the data.
    std::int32_t clamped(std::int32_t remaining) const {
        return std::min(length, remaining - headerOctets);
    }
};

// The high-tag-number mask under the context's encoding rules.
std::uint8_t tagMask(const ZxqGlobal& context);

// Reads the header at `triple` into a record in place, silently: a record that is copied right
// after its fields were written one by one costs several times as much. With nothing remaining
// every field is unreadable.
void readLongHeader(TripleHeader& header, OctetView triple, std::uint8_t mask);
inline void readHeaderInto(TripleHeader& header, OctetView triple, std::uint8_t mask) {
    // Nearly every header is two octets: a low tag number and a short-form length.
    if (triple.remaining >= 2) {
        const std::uint8_t identifier = triple.position[0];
        const std::uint8_t length = triple.position[1];
        if ((identifier & mask) != mask && length < 0x80) {
            header.tagNumber = identifier & mask;
            header.identifierOctets = 1;
            header.headerOctets = 2;
            header.length = length;
            header.tagClass = static_cast<TagClass>(identifier >> 6);
            header.constructed = (identifier & 0x20) != 0;
            header.longForm = false;
            header.faults = 0;
            return;
        }
    }
    readLongHeader(header, triple, mask);
}
inline TripleHeader readHeader(OctetView triple, std::uint8_t mask) {
    TripleHeader header;
    readHeaderInto(header, triple, mask);
    return header;
}

// Whether the triple whose header was read at `triple` is indefinite and empty: 00 00 follows its
// header at once.
inline bool isEmptyIndefinite(OctetView triple, const TripleHeader& header) {
    return header.isIndefinite() && triple.from(header.headerOctets).atEndOfContents();
}

// The identifier octets (1 or more), moving `triple` to the first length octet; kUnreadable, and
// `triple` stays, when the data ends inside them or no length octet follows.
std::int32_t identifierLength(const ZxqGlobal& context, OctetView& triple);

// The length at `octets`, which moves past the length octets read: a value, kIndefinite, or
// kUnreadable when the data ends inside them.
std::int32_t decodeLengthOctets(OctetView& octets);

// Identifier plus length octets of the header read at `triple`; 0 when nothing remains,
// kUnreadable after raising KX017E. One that is longer than the data raises KX038E.
std::int32_t headerLength(ZxqGlobal& context, OctetView triple, const TripleHeader& header);

// The length of the header read at `triple`, for a header that `headerLength` has measured: the
// declared length or kIndefinite. A header longer than the data gives 0, also where its length
// octets are cut. Raises KX035E for a definite length beyond the data.
std::int32_t lengthChecked(ZxqGlobal& context, OctetView triple, const TripleHeader& header);

// Both of the above for a line printer: raises what is wrong with the header. Returns whether the
// header and its length octets can be read and lie inside the data.
inline bool checkHeader(ZxqGlobal& context, OctetView triple, const TripleHeader& header) {
    if (header.faults == 0 && !header.exceeds(triple.remaining)) {
        return true;
    }
    const std::int32_t octets = headerLength(context, triple, header);
    return octets != kUnreadable && octets <= triple.remaining &&
           lengthChecked(context, triple, header) != kUnreadable;
}

// The messages of the two above, for a line printer that needs them one by one. KX017E carries
// the position and the octets that remain there.
void reportPrematureEnd(ZxqGlobal& context, OctetView triple);
void reportHeaderTooLong(ZxqGlobal& context, OctetView triple, const TripleHeader& header);
void reportLengthTooLong(ZxqGlobal& context, OctetView triple, const TripleHeader& header);

// The tag number of the header read at `triple`, or -1 after raising KX017E when the data ends
// inside a high tag number.
std::int64_t tagNumber(ZxqGlobal& context, OctetView triple, const TripleHeader& header);

}  // namespace zxqtlv
