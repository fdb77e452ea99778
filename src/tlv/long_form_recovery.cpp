#include "tlv/long_form_recovery.h"

#include <optional>

#include "runtime/flags.h"
#include "runtime/print.h"
#include "runtime/runtime_private.h"

namespace zxqtlv {
namespace {

constexpr std::uint32_t kMostFixups = 1000;
constexpr std::uint8_t kOneLengthOctet = 0x81;

// Whether the triple's length can be read and neither it nor the header runs past the data.
bool measures(ZxqGlobal& context, OctetView triple, const TripleHeader& header) {
    return checkHeader(context, triple, header) && !header.exceeds(triple.remaining);
}

// Whether three triples measure: this one, which has no contents, and the next two in the order in
// which a walk would meet them. An encoding that ends before parses too.
bool parsesAsItStands(ZxqGlobal& context, TripleWalk& walk) {
    const ScopedFlags silent(context.flags, QuietNonFatal | PrematureEndNotFatal);
    const std::uint8_t mask = tagMask(context);
    const std::optional<OctetView> second =
        nextTriple(context, walk.search(), walk.triple(), walk.header());
    if (!second) {
        return true;
    }
    const TripleHeader header = readHeader(*second, mask);
    if (!measures(context, *second, header)) {
        return false;
    }
    std::optional<OctetView> third = contentsOf(context, walk.search(), *second, header);
    if (!third || third->remaining <= 0) {
        third = nextTriple(context, walk.search(), *second, header);
    }
    return !third || measures(context, *third, readHeader(*third, mask));
}

bool isCandidate(OctetView triple, const TripleHeader& header) {
    return triple.position[0] != 0 && header.identifierOctets != kUnreadable &&
           header.headerOctets < triple.remaining &&
           triple.position[header.identifierOctets] == 0 &&
           (triple.position[header.headerOctets] & 0x80) != 0;
}

}  // namespace

bool recoverLongForm(ZxqGlobal& context, TripleWalk& walk, EncodedBuffer& buffer) {
    std::uint32_t& fixups = context.runtimePrivate->fixupCount;
    const OctetView triple = walk.triple();
    if (fixups >= kMostFixups || !isCandidate(triple, walk.header()) ||
        parsesAsItStands(context, walk)) {
        return false;
    }
    std::uint8_t& lengthOctet =
        buffer.octets[triple.position - buffer.octets + walk.header().identifierOctets];
    lengthOctet = kOneLengthOctet;
    const TripleHeader repaired = readHeader(triple, tagMask(context));
    if (!repaired.fits(triple.remaining) || repaired.exceeds(triple.remaining)) {
        lengthOctet = 0;
        return false;
    }
    walk.reread();
    printBlock(context).append(
        "\nPossible invalid length in the long form; continuing as if '81' were used instead of "
        "'00':");
    ++fixups;
    return true;
}

}  // namespace zxqtlv
