#include "codec/segments.h"

#include "runtime/memory.h"

namespace zxqtlv {
namespace {

// The unused bits that a bit string's piece states, or -1 for a statement that cannot be
// (X.690, 8.6.2.2 and 8.6.2.3).
int unusedBits(OctetView piece) {
    if (piece.remaining < 1 || piece.position[0] > 7 ||
        (piece.position[0] != 0 && piece.remaining < 2)) {
        return -1;
    }
    return piece.position[0];
}

bool isSegment(const TripleHeader& header, SegmentTag tag) {
    return header.tagClass == TagClass::Universal &&
           header.tagNumber == static_cast<std::int64_t>(tag);
}

class SegmentCheck {
  public:
    SegmentCheck(ZxqGlobal& context, OctetView triple, SegmentTag tag, StringContents& contents)
        : origin_(triple.position), tag_(tag), contents_(contents), levels_(context) {}

    SegmentStatus run(OctetView triple, const TripleHeader& header);

  private:
    struct Level {
        std::int32_t bound;  // offset that no segment may pass
        bool indefinite;
    };

    SegmentStatus takeSegment();
    bool takePiece(OctetView piece);
    bool enter(const TripleHeader& header, std::int32_t bound);

    const std::uint8_t* const origin_;
    const SegmentTag tag_;
    StringContents& contents_;
    WorkArray<Level> levels_;
    std::int32_t position_ = 0;  // offset
};

bool SegmentCheck::enter(const TripleHeader& header, std::int32_t bound) {
    position_ += header.headerOctets;
    return header.isIndefinite() ? levels_.push({bound, true})
                                 : levels_.push({position_ + header.length, false});
}

bool SegmentCheck::takePiece(OctetView piece) {
    if (tag_ != SegmentTag::BitString) {
        contents_.valueOctets += piece.remaining;
        return true;
    }
    const int unused = unusedBits(piece);
    // Unused bits in an earlier piece leave a hole.
    if (unused < 0 || contents_.unusedBits != 0) {
        return false;
    }
    contents_.unusedBits = unused;
    contents_.valueOctets += piece.remaining - 1;
    return true;
}

SegmentStatus SegmentCheck::takeSegment() {
    const std::int32_t bound = levels_.back().bound;
    const OctetView here{origin_ + position_, bound - position_};
    const TripleHeader header = readHeader(here, kBerTagMask);
    if (!header.fits(here.remaining) || header.length == kUnreadable || !isSegment(header, tag_) ||
        header.exceeds(here.remaining) || (header.isIndefinite() && !header.constructed)) {
        return SegmentStatus::Misencoded;
    }
    if (header.constructed) {
        return enter(header, bound) ? SegmentStatus::Sound : SegmentStatus::NoMemory;
    }
    position_ += header.headerOctets + header.length;
    return takePiece({here.position + header.headerOctets, header.length})
               ? SegmentStatus::Sound
               : SegmentStatus::Misencoded;
}

SegmentStatus SegmentCheck::run(OctetView triple, const TripleHeader& header) {
    if (!enter(header, triple.remaining)) {
        return SegmentStatus::NoMemory;
    }
    const std::int32_t start = position_;
    std::int32_t end = start;
    while (!levels_.empty()) {
        const Level level = levels_.back();
        const OctetView here{origin_ + position_, level.bound - position_};
        end = position_;
        if (level.indefinite && here.atEndOfContents()) {
            position_ += 2;
            levels_.pop();
        } else if (here.remaining > 0) {
            if (const SegmentStatus status = takeSegment(); status != SegmentStatus::Sound) {
                return status;
            }
        } else if (level.indefinite) {
            return SegmentStatus::Misencoded;
        } else {
            levels_.pop();
        }
    }
    contents_.octets = {origin_ + start, end - start};
    return SegmentStatus::Sound;
}

}  // namespace

bool readPrimitive(OctetView triple, const TripleHeader& header, SegmentTag tag,
                   StringContents& contents) {
    if (!header.fits(triple.remaining) || header.length < 0 || header.exceeds(triple.remaining)) {
        return false;
    }
    const bool bits = tag == SegmentTag::BitString;
    const OctetView octets{triple.position + header.headerOctets, header.length};
    const int unused = bits ? unusedBits(octets) : 0;
    contents = {octets, false, bits, octets.remaining - (bits ? 1 : 0), unused};
    return unused >= 0;
}

SegmentStatus readSegments(ZxqGlobal& context, OctetView triple, const TripleHeader& header,
                           SegmentTag tag, StringContents& contents) {
    contents = {{nullptr, 0}, true, tag == SegmentTag::BitString, 0, 0};
    if (tag == SegmentTag::None || !header.fits(triple.remaining) || header.length == kUnreadable ||
        header.exceeds(triple.remaining)) {
        return SegmentStatus::Misencoded;
    }
    return SegmentCheck(context, triple, tag, contents).run(triple, header);
}

OctetCursor::OctetCursor(const StringContents& contents)
    : piece_{contents.octets.position, 0}, rest_(contents.octets), bits_(contents.bits) {
    if (!contents.segmented) {
        piece_ = rest_.from(bits_ ? 1 : 0);
        rest_.remaining = 0;
    }
}

std::optional<OctetView> OctetCursor::nextPiece() {
    if (piece_.remaining <= 0 && !loadPiece()) {
        return std::nullopt;
    }
    const OctetView piece = piece_;
    piece_.remaining = 0;
    return piece;
}

// The segments are sound, so their headers follow each other: into a constructed one, past a
// closing pair, to the next primitive one.
bool OctetCursor::loadPiece() {
    while (rest_.remaining > 0) {
        if (rest_.atEndOfContents()) {
            rest_ = rest_.from(2);
            continue;
        }
        const TripleHeader header = readHeader(rest_, kBerTagMask);
        rest_ = rest_.from(header.headerOctets);
        if (header.constructed) {
            continue;
        }
        piece_ = {rest_.position, header.length};
        rest_ = rest_.from(header.length);
        if (bits_) {
            piece_ = piece_.from(1);
        }
        if (piece_.remaining > 0) {
            return true;
        }
    }
    return false;
}

}  // namespace zxqtlv
