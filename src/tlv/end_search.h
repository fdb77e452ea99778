// Where indefinite-length triples end.
//
// For: finding the end-of-contents octets of a triple and of all the triples inside it with one
// pass over their headers. Walkers ask for the outer triple first and then, on their way in and
// out again, for those inside; all of these share that pass.
// Not for: messages; the caller raises them from the answer.
//
// How: the headers that a search meets follow from where it starts alone, never from where it must
// stop; an earlier bound only cuts their row shorter. A row, with the end of each indefinite
// triple on it, so answers for every triple on it and for every earlier bound. Definite triples
// are stepped over; a search that starts inside one gets a row of its own on top.
//
//     EndSearch search(context, octets);            // 30 80 30 80 00 00 00 00
//     search.find({octets, 8}, 2).octets;           // 8
//     search.find({octets + 2, 4}, 2).octets;       // 4, from the same pass
#pragma once

#include <cstddef>
#include <cstdint>

#include "runtime/memory.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

struct IndefiniteExtent {
    bool closed;  // end-of-contents octets were found
    std::int32_t
        octets;  // from the identifier to behind the end-of-contents octets; 0 if not found
    const std::uint8_t* unreadable;  // the header that ended the search early, or null
};

class EndSearch {
  public:
    // `origin` is the start of the buffer that all triples asked for lie in.
    EndSearch(ZxqGlobal& context, const std::uint8_t* origin);

    // The extent of the indefinite triple at `triple`, whose header has `headerOctets` octets,
    // inside the remaining octets. Raises KX001S when memory is exhausted, and then finds nothing.
    IndefiniteExtent find(OctetView triple, std::int32_t headerOctets);

    // Octets of a header at `position` were changed: what is known of the triples around it must
    // be found out anew.
    void octetsChanged(const std::uint8_t* position);

  private:
    // An indefinite triple on a row. While no end is known, `end` is negative and leads to the
    // enclosing triple.
    struct Indefinite {
        std::int32_t start;
        std::int32_t end;
    };
    struct Row {
        std::int32_t start;
        std::int32_t bound;       // where the pass had to stop
        std::int32_t end;         // of the first triple, or the bound
        std::int32_t unreadable;  // the header that ended the pass, or kNone
        std::int32_t deepest;     // levels
        std::int32_t tailStart;   // lowest bound that the tail answers for, or kNone
        std::int32_t changedAt;   // from here on the row is no longer true, or kNone
        std::size_t firstTriple;  // in triples_
        std::size_t firstTail;    // in tail_
    };
    static constexpr std::int32_t kNone = -1;

    void dropRowsWithout(std::int32_t position);
    const Indefinite* onTopRow(std::int32_t start);
    bool repeatTopRow();
    void forget();
    bool addRow(std::int32_t start, std::int32_t headerOctets, std::int32_t bound);
    std::int32_t unreadableBefore(Row& row, std::int32_t start, std::int32_t bound);
    bool recordTail(Row& row);
    std::int32_t headerAfter(std::int32_t position, std::int32_t bound) const;
    OctetView at(std::int32_t position, std::int32_t bound) const {
        return {origin_ + position, bound - position};
    }

    ZxqGlobal& context_;
    const std::uint8_t* const origin_;
    const std::uint8_t mask_;
    WorkArray<Row> rows_;            // the innermost last
    WorkArray<Indefinite> triples_;  // of all rows, each row's in the order of their starts
    WorkArray<std::int32_t> tail_;   // starts of the last headers of a row
    std::size_t lastFound_ = 0;      // in triples_; the next question is often its neighbour
};

}  // namespace zxqtlv
