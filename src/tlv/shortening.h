// How much of a long contents text a line shows.
//
// For: the limits that the line width of the context puts on contents.
// Not for: cutting; the layouts cut their own texts.
#pragma once

#include <cstdint>

#include "runtime/context.h"

namespace zxqtlv {

inline constexpr std::int64_t kLongestText = 1024;  // characters

// The characters that a contents text may have where the line has `room` for it (below 0 when the
// line is full already). `unset` is the limit where the line width is not set or below the room.
inline std::int64_t shortenedLimit(const ZxqGlobal& context, std::int64_t room,
                                   std::int64_t unset) {
    const std::int64_t width = context.lineWidth;
    if (width == 0 || width > kLongestText) {
        return kLongestText;
    }
    return width < room || width == kLineWidthNotSet ? unset : width;
}

}  // namespace zxqtlv
