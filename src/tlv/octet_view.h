// A place in an encoding and how much is left from there.
//
// For: passing octets around without owning or copying them; the buffer outlives every view.
// Not for: bounds decisions; those are the header rules' (tlv/header.h), made once per triple.
#pragma once

#include <cstdint>

namespace zxqtlv {

struct OctetView {
    const std::uint8_t* position;
    std::int32_t remaining;  // octets to the end of the enclosing encoding; below 0 counts as 0

    OctetView from(std::int32_t skipped) const { return {position + skipped, remaining - skipped}; }
    // Whether the next two octets are an end-of-contents pair (X.690, 8.1.5).
    bool atEndOfContents() const { return remaining >= 2 && position[0] == 0 && position[1] == 0; }
};

// A loaded encoding. Who fills one says who owns the octets.
struct EncodedBuffer {
    std::int32_t length;  // octets
    std::uint8_t* octets;

    OctetView view() const { return {octets, length}; }
};

}  // namespace zxqtlv
