// Time records as text.
//
//     240102030405Z    20240102030405.007-0530
#pragma once

#include <cstddef>
#include <cstdint>

#include "codec/values.h"

namespace zxqtlv {

inline constexpr std::size_t kTimeText = 64;

// Writes the NUL-terminated UTCTime or GeneralizedTime text to `out`, which has room for kTimeText
// characters. Returns 0, or 7 for a field out of range (any day up to 31 is in range), and then
// writes nothing. A GeneralizedTime always shows its milliseconds; a UTCTime is always marked "Z"
// or with a difference.
std::uint32_t formatTimeText(const TimeRecord& time, char* out, bool utcTime);

// The same between double quotes.
std::uint32_t formatQuotedTimeText(const TimeRecord& time, char* out, bool utcTime);

}  // namespace zxqtlv
