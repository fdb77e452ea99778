// The contents octets of a primitive or constructed string, wherever they stand.
//
// For: reading a string's octets in order without copying them, also when the string is sent in
// segments that are constructed again (X.690, 8.6.4, 8.7.3, 8.23.6).
// Not for: octets whose segments nobody has checked; `readSegments` does.
//
//     OctetCursor cursor(contents);
//     while (std::optional<OctetView> piece = cursor.nextPiece()) { ... }
#pragma once

#include <cstdint>
#include <optional>

#include "runtime/context.h"
#include "tlv/header.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// How a built-in type may be sent in segments, by the universal tag of these.
enum class SegmentTag : std::uint8_t { None = 0, BitString = 3, OctetString = 4 };

// All the octets of one value.
struct StringContents {
    OctetView octets;          // contents octets, the headers of segments included
    bool segmented;            // constructed
    bool bits;                 // each segment starts with an octet of its own, for unused bits
    std::int32_t valueOctets;  // of the value, without any header and without those octets
    std::int32_t unusedBits;   // of the last octet of a bit string
};

// Fills in the contents of the primitive triple whose header was read at `triple`. False for the
// indefinite form, a length beyond the data, or unused bits that cannot be.
bool readPrimitive(OctetView triple, const TripleHeader& header, SegmentTag tag,
                   StringContents& contents);

enum class SegmentStatus { Sound, Misencoded, NoMemory };

// Checks the segments of the constructed triple whose header was read at `triple`, to any depth,
// and fills in `contents`. All segments have the tag `tag`, lie inside the triple that holds them,
// and are closed where they are indefinite; unused bits stand in the last primitive one only.
SegmentStatus readSegments(ZxqGlobal& context, OctetView triple, const TripleHeader& header,
                           SegmentTag tag, StringContents& contents);

// Goes through a string's octets. A copy goes on from the same place.
class OctetCursor {
  public:
    explicit OctetCursor(const StringContents& contents);

    // The octets up to the end of the segment; none at the end of the string.
    std::optional<OctetView> nextPiece();
    // What is left of the current segment.
    OctetView piece() const { return piece_; }
    // Past octets of the current segment.
    void skip(std::int32_t octets) { piece_ = piece_.from(octets); }
    // The next octet, or -1 at the end of the string.
    int peek() { return piece_.remaining > 0 || loadPiece() ? *piece_.position : -1; }
    int next() {
        const int octet = peek();
        if (octet >= 0) {
            piece_ = piece_.from(1);
        }
        return octet;
    }

  private:
    bool loadPiece();

    OctetView piece_;  // what is left of the current segment
    OctetView rest_;   // behind it: headers and further segments
    bool bits_;
};

}  // namespace zxqtlv
