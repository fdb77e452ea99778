// Going through the triples of an encoding, into their contents and out again.
//
// For: the steps that every layout makes: the current triple with its header, decoded once; into
// the contents (`contentsOf`); to the next triple (`nextTriple`); back out. The way back is a
// stack of small records, so nesting is limited by memory alone.
// Not for: printing, or deciding what is entered.
//
//     TripleWalk walk(context, buffer.view());
//     do {
//         show(walk.triple(), walk.header(), walk.depth());
//     } while (walk.descend() || walk.advance());
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "runtime/context.h"
#include "runtime/memory.h"
#include "tlv/end_search.h"
#include "tlv/header.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// The contents octets of the constructed triple whose header was read at `triple`, the closing
// 00 00 of an indefinite one excluded: two octets come off whether these are 00 00 or not, so the
// count may fall below 0. None for a primitive triple, empty contents or a header that cannot be
// measured. Silent, but for fatal codes.
std::optional<OctetView> contentsOf(ZxqGlobal& context, EndSearch& search, OctetView triple,
                                    const TripleHeader& header);

// The triple behind the one at `triple`; none at the end of the data. Raises KX017E for a length
// that cannot be read and KX036E for an indefinite length that nothing closes.
std::optional<OctetView> nextTriple(ZxqGlobal& context, EndSearch& search, OctetView triple,
                                    const TripleHeader& header);

class TripleWalk {
  public:
    TripleWalk(ZxqGlobal& context, OctetView encoding);

    // The current triple; nothing remains at the end of a level.
    OctetView triple() const { return {origin_ + start_, bound_ - start_}; }
    bool atEnd() const { return start_ >= bound_; }
    // Of the current triple.
    const TripleHeader& header() const { return header_; }
    // 0 for the records of the input, one more per constructed level.
    std::size_t depth() const { return levels_.size(); }

    // To the first triple of the current one's contents, when it has any.
    bool descend() {
        if (!header_.constructed) {
            return false;
        }
        const std::int32_t inside = bound_ - start_ - header_.headerOctets;
        if (header_.length > 0 && header_.length <= inside && header_.headerOctets > 0) {
            return enter(header_.headerOctets, header_.length, 0);
        }
        return enterContents();
    }
    // To the next triple of the level. False at its end, where then nothing remains.
    bool advance() {
        // Definite lengths that fit, nearly all, need no search.
        const std::int32_t inside = bound_ - start_ - header_.headerOctets;
        if (header_.length >= 0 && header_.length < inside) {
            moveTo(start_ + header_.headerOctets + header_.length, bound_);
            return true;
        }
        if (header_.length >= 0 && header_.length == inside) {
            start_ = bound_;
            return false;
        }
        return searchNext();
    }
    // At the end of a level: out of it, and of those that end with it, to the next triple. False
    // when there is none; nothing remains then. `onClosing` is called, back at each triple with the
    // indefinite form, with the two octets behind its contents.
    template <typename OnClosing>
    bool leave(OnClosing onClosing) {
        while (!levels_.empty()) {
            if (levels_.back().indefiniteHeader == 0) {
                if (leaveDefinite()) {
                    return true;
                }
                continue;
            }
            onClosing(ascend());
            if (advance()) {
                return true;
            }
        }
        return false;
    }
    // Past `octets` of padding, at a place where a triple may start.
    void skip(std::int32_t octets);
    // Reads the current header again, after its octets were changed.
    void reread();

    EndSearch& search() { return search_; }

  private:
    struct Level {
        std::int32_t bound;
        std::int32_t start;
        std::int32_t indefiniteHeader;  // its octets; 0 for the definite form
    };

    void moveTo(std::int32_t start, std::int32_t bound) {
        start_ = start;
        bound_ = bound;
        readHeaderInto(header_, triple(), mask_);
    }
    bool enter(std::int32_t skipped, std::int32_t contentsOctets, std::int32_t indefiniteHeader) {
        if (!levels_.push({bound_, start_, indefiniteHeader})) {
            reportNoMemory();
            return false;
        }
        moveTo(start_ + skipped, start_ + skipped + contentsOctets);
        return true;
    }
    // Behind the triple whose contents these are is where they end.
    bool leaveDefinite() {
        const std::int32_t bound = levels_.back().bound;
        levels_.pop();
        if (bound_ < bound) {
            moveTo(bound_, bound);
            return true;
        }
        start_ = bound_ = bound;
        return false;
    }
    // Back to the triple with the indefinite form whose contents these are; of its header only the
    // octets and the length are filled in. Returns the two octets behind its contents.
    OctetView ascend();
    bool enterContents();
    void reportNoMemory();
    bool searchNext();
    std::int32_t offsetOf(OctetView view) const {
        return static_cast<std::int32_t>(view.position - origin_);
    }

    ZxqGlobal& context_;
    const std::uint8_t* const origin_;
    const std::uint8_t mask_;
    std::int32_t start_ = 0;  // offset of the current triple
    std::int32_t bound_ = 0;  // offset of the end of its level
    TripleHeader header_{};
    WorkArray<Level> levels_;
    EndSearch search_;
};

}  // namespace zxqtlv
