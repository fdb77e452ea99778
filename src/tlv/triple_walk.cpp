#include "tlv/triple_walk.h"

#include <algorithm>

#include "runtime/flags.h"
#include "runtime/report.h"

namespace zxqtlv {
namespace {

// Octets that remain behind the triple.
std::int32_t octetsBehind(ZxqGlobal& context, EndSearch& search, OctetView triple,
                          const TripleHeader& header) {
    if (triple.remaining <= 0) {
        return 0;
    }
    if (header.length == kUnreadable) {
        reportPrematureEnd(context, triple);
        return 0;
    }
    if (!header.isIndefinite()) {
        return header.exceeds(triple.remaining)
                   ? 0
                   : triple.remaining - header.headerOctets - header.length;
    }
    const IndefiniteExtent extent = search.find(triple, header.headerOctets);
    if (extent.closed) {
        return triple.remaining - extent.octets;
    }
    if (extent.unreadable != nullptr) {
        const ScopedFlags quiet(context.flags, QuietNonFatal);
        const auto skipped = static_cast<std::int32_t>(extent.unreadable - triple.position);
        reportPrematureEnd(context, triple.from(skipped));
    }
    kxReportError(&context, kEocNotFound);
    return 0;
}

}  // namespace

std::optional<OctetView> contentsOf(ZxqGlobal& context, EndSearch& search, OctetView triple,
                                    const TripleHeader& header) {
    if (!header.constructed || header.headerOctets < 1) {
        return std::nullopt;
    }
    std::int32_t count = header.length;
    if (header.length < 0 || header.exceeds(triple.remaining)) {
        const ScopedFlags quiet(context.flags, QuietNonFatal);
        count = triple.remaining - header.headerOctets -
                octetsBehind(context, search, triple, header) - (header.isIndefinite() ? 2 : 0);
    }
    if (count == 0) {
        return std::nullopt;
    }
    return OctetView{triple.position + header.headerOctets, count};
}

std::optional<OctetView> nextTriple(ZxqGlobal& context, EndSearch& search, OctetView triple,
                                    const TripleHeader& header) {
    const std::int32_t behind = octetsBehind(context, search, triple, header);
    if (behind <= 0) {
        return std::nullopt;
    }
    return triple.from(triple.remaining - behind);
}

TripleWalk::TripleWalk(ZxqGlobal& context, OctetView encoding)
    : context_(context),
      origin_(encoding.position),
      mask_(tagMask(context)),
      levels_(context),
      search_(context, encoding.position) {
    moveTo(0, std::max(encoding.remaining, 0));
}

bool TripleWalk::enterContents() {
    if (header_.has(HeaderTooLong)) {
        return false;  // contents would start behind the data
    }
    const std::optional<OctetView> contents = contentsOf(context_, search_, triple(), header_);
    if (!contents) {
        return false;
    }
    return enter(offsetOf(*contents) - start_, contents->remaining,
                 header_.isIndefinite() ? header_.headerOctets : 0);
}

void TripleWalk::reportNoMemory() {
    kxReportError(&context_, kOutOfMemoryCode);
}

bool TripleWalk::searchNext() {
    const std::optional<OctetView> next = nextTriple(context_, search_, triple(), header_);
    if (!next) {
        start_ = bound_;
        return false;
    }
    moveTo(offsetOf(*next), bound_);
    return true;
}

OctetView TripleWalk::ascend() {
    const OctetView behind{origin_ + bound_, 2};
    const Level& level = levels_.back();
    start_ = level.start;
    bound_ = level.bound;
    header_.headerOctets = level.indefiniteHeader;
    header_.length = kIndefinite;
    levels_.pop();
    return behind;
}

void TripleWalk::skip(std::int32_t octets) {
    moveTo(start_ + octets, bound_);
}

void TripleWalk::reread() {
    search_.octetsChanged(origin_ + start_);
    header_ = readHeader(triple(), mask_);
}

}  // namespace zxqtlv
