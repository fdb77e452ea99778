#include "tlv/end_search.h"

#include <algorithm>

#include "runtime/report.h"
#include "tlv/header.h"

namespace zxqtlv {
namespace {

// An open triple's `end` names the enclosing one by its place on the row, -1 for none.
constexpr std::int32_t enclosingToEnd(std::int32_t enclosing) {
    return -2 - enclosing;
}
constexpr std::int32_t endToEnclosing(std::int32_t end) {
    return -2 - end;
}

}  // namespace

EndSearch::EndSearch(ZxqGlobal& context, const std::uint8_t* origin)
    : context_(context),
      origin_(origin),
      mask_(tagMask(context)),
      rows_(context),
      triples_(context),
      tail_(context) {}

// Only the row that the header stands on runs through it; the rows below step over the definite
// triple that holds them both.
void EndSearch::octetsChanged(const std::uint8_t* position) {
    const auto changed = static_cast<std::int32_t>(position - origin_);
    dropRowsWithout(changed);
    if (rows_.empty()) {
        return;
    }
    Row& row = rows_.back();
    row.changedAt = row.changedAt == kNone ? changed : std::min(row.changedAt, changed);
    row.end = row.bound;  // for all that is known now
}

bool EndSearch::repeatTopRow() {
    const Row row = rows_.back();
    rows_.pop();
    triples_.truncate(row.firstTriple);
    tail_.truncate(row.firstTail);
    const TripleHeader header = readHeader(at(row.start, row.bound), mask_);
    return addRow(row.start, header.headerOctets, row.bound);
}

void EndSearch::forget() {
    rows_.truncate(0);
    triples_.truncate(0);
    tail_.truncate(0);
}

IndefiniteExtent EndSearch::find(OctetView triple, std::int32_t headerOctets) {
    const auto start = static_cast<std::int32_t>(triple.position - origin_);
    const std::int32_t bound = start + triple.remaining;
    dropRowsWithout(start);
    const bool changed = !rows_.empty() && rows_.back().changedAt != kNone;
    // A triple behind a change gets a row of its own; one around it needs the whole row again.
    const bool isBehind = changed && start > rows_.back().changedAt;
    const bool repeated = !changed || isBehind || repeatTopRow();
    const Indefinite* found = isBehind || !repeated ? nullptr : onTopRow(start);
    if (found == nullptr) {
        if (!repeated || !addRow(start, headerOctets, bound)) {
            forget();
            kxReportError(&context_, kOutOfMemoryCode);
            return {false, 0, nullptr};
        }
        found = onTopRow(start);
    }
    if (found->end >= 0 && found->end <= bound) {
        return {true, found->end - start, nullptr};
    }
    const std::int32_t unreadable = unreadableBefore(rows_.back(), start, bound);
    return {false, 0, unreadable == kNone ? nullptr : origin_ + unreadable};
}

// Walkers go forward and never come back into what they have left.
void EndSearch::dropRowsWithout(std::int32_t position) {
    while (!rows_.empty() && (position < rows_.back().start || position >= rows_.back().end)) {
        triples_.truncate(rows_.back().firstTriple);
        tail_.truncate(rows_.back().firstTail);
        rows_.pop();
    }
}

const EndSearch::Indefinite* EndSearch::onTopRow(std::int32_t start) {
    if (rows_.empty()) {
        return nullptr;
    }
    const std::size_t first = rows_.back().firstTriple;
    const std::size_t end = triples_.size();
    for (std::size_t near = std::max(lastFound_, first + 1) - 1;
         near < std::min(lastFound_ + 2, end); ++near) {
        if (triples_[near].start == start) {
            lastFound_ = near;
            return &triples_[near];
        }
    }
    const Indefinite* const begin = &triples_[first];
    const Indefinite* const found = std::lower_bound(
        begin, begin + (end - first), start,
        [](const Indefinite& triple, std::int32_t wanted) { return triple.start < wanted; });
    if (found == begin + (end - first) || found->start != start) {
        return nullptr;
    }
    lastFound_ = first + static_cast<std::size_t>(found - begin);
    return found;
}

// The one pass: a row of headers with a counter of the triples that are open.
bool EndSearch::addRow(std::int32_t start, std::int32_t headerOctets, std::int32_t bound) {
    Row row{start, bound, bound, kNone, 1, kNone, kNone, triples_.size(), tail_.size()};
    if (!triples_.push({start, enclosingToEnd(-1)})) {
        return false;
    }
    std::int32_t innermost = 0;  // place on the row
    std::int32_t open = 1;
    std::int32_t position = start + headerOctets;
    while (position < bound) {
        const OctetView here = at(position, bound);
        if (here.atEndOfContents()) {
            position += 2;
            Indefinite& closed = triples_[row.firstTriple + static_cast<std::size_t>(innermost)];
            innermost = endToEnclosing(closed.end);
            closed.end = position;
            if (--open == 0) {
                row.end = position;
                break;
            }
            continue;
        }
        const TripleHeader header = readHeader(here, mask_);
        if (header.length == kUnreadable) {
            row.unreadable = position;
            break;
        }
        if (header.isIndefinite()) {
            const auto place = static_cast<std::int32_t>(triples_.size() - row.firstTriple);
            if (!triples_.push({position, enclosingToEnd(innermost)})) {
                return false;
            }
            innermost = place;
            row.deepest = std::max(row.deepest, ++open);
            position += header.headerOctets;
        } else if (header.exceeds(here.remaining)) {
            break;
        } else {
            position += header.headerOctets + header.length;
        }
    }
    return rows_.push(row);
}

// Where the header after the one at `position` starts on its row; kNone when there is none.
std::int32_t EndSearch::headerAfter(std::int32_t position, std::int32_t bound) const {
    const OctetView here = at(position, bound);
    if (here.atEndOfContents()) {
        return position + 2;
    }
    const TripleHeader header = readHeader(here, mask_);
    if (header.length == kUnreadable || header.exceeds(here.remaining)) {
        return kNone;
    }
    return position + header.headerOctets + std::max(header.length, 0);
}

// Each level without an end takes two octets off the bound of the levels inside it, so the bounds
// asked for lie at most that far below the row's own.
bool EndSearch::recordTail(Row& row) {
    row.tailStart = std::max(row.start, row.bound - 2 * std::min(row.deepest, row.bound / 2));
    std::int32_t position = row.start;
    while (position != kNone && position < row.bound) {
        const std::int32_t next = headerAfter(position, row.bound);
        if ((next == kNone || next > row.tailStart) && !tail_.push(position)) {
            return false;
        }
        position = next;
    }
    return true;
}

// The header that a search from `start` cannot read because `bound` cuts it; kNone when the search
// just runs out of data.
std::int32_t EndSearch::unreadableBefore(Row& row, std::int32_t start, std::int32_t bound) {
    if (bound == row.bound) {
        return row.unreadable;
    }
    if (row.tailStart == kNone && !recordTail(row)) {
        row.tailStart = row.bound;
        tail_.truncate(row.firstTail);
    }
    std::int32_t last = start;
    if (bound >= row.tailStart && tail_.size() > row.firstTail) {
        const std::int32_t* const begin = &tail_[row.firstTail];
        const std::int32_t* const after =
            std::lower_bound(begin, begin + (tail_.size() - row.firstTail), bound);
        last = after == begin ? start : after[-1];
    } else {
        for (std::int32_t next = start; next != kNone && next < bound;
             next = headerAfter(next, bound)) {
            last = next;
        }
    }
    const OctetView here = at(last, bound);
    return !here.atEndOfContents() && readHeader(here, mask_).length == kUnreadable ? last : kNone;
}

}  // namespace zxqtlv
