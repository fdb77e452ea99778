// Octets as pairs of hexadecimal digits, in place on a line.
//
// For: the one way in which the layouts show raw octets: blanks, digits, a text behind them.
// Not for: shortening; the caller says how many octets are shown.
//
//     printHexPairs(out, {octets, 2}, 2, " ");  // "  3082 "
#pragma once

#include <cstddef>
#include <string_view>

#include "runtime/print_block.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// Prints `indentation` blanks, the view's octets without separators, and the trailer. An empty
// view prints nothing at all.
inline void printHexPairs(PrintBlock& out, OctetView octets, std::size_t indentation,
                          std::string_view trailer) {
    if (octets.remaining <= 0) {
        return;
    }
    out.appendBlanks(indentation);
    out.appendHex(octets.position, static_cast<std::size_t>(octets.remaining));
    if (!trailer.empty()) {
        out.append(trailer);
    }
}

}  // namespace zxqtlv
