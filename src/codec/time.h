// UTCTime and GeneralizedTime texts to time records (X.680, 46 and 47).
//
// For: the written forms; a field that is not written is 0.
// Not for: whether a month has that day or an hour is below 24; the writer of the text checks
// ranges.
//
//     240102030405Z          2024..., utc
//     20240102030405.007+01  milliseconds 7, difference 60
#pragma once

#include <optional>

#include "codec/segments.h"
#include "codec/values.h"

namespace zxqtlv {

// YYMMDDhhmm[ss] and "Z", +hhmm or -hhmm. None for anything else.
std::optional<TimeRecord> parseUtcTime(const StringContents& text);

// YYYYMMDDhh[mm[ss]], a fraction of the last unit behind "." or ",", and nothing, "Z", +hh[mm] or
// -hh[mm]. The fraction is cut to milliseconds. None for anything else.
std::optional<TimeRecord> parseGeneralizedTime(const StringContents& text);

}  // namespace zxqtlv
