#include "contents/time_text.h"

#include <cstdlib>
#include <cstring>

#include "runtime/kx_messages.h"

namespace zxqtlv {
namespace {

bool isInRange(const TimeRecord& time, bool utcTime) {
    return time.year >= 0 && time.month >= 1 && time.month <= 12 && time.day >= 1 &&
           time.day <= 31 && time.hour >= 0 && time.hour <= 23 && time.minute >= 0 &&
           time.minute <= 59 && time.second >= 0 && time.second <= 59 &&
           (utcTime || time.milliseconds <= 999);
}

// `digits` decimal digits, with zeros in front.
char* putDigits(char* out, int value, int digits) {
    for (int i = digits - 1; i >= 0; --i) {
        out[i] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    return out + digits;
}

char* putDifference(char* out, const TimeRecord& time, bool utcTime) {
    if (time.utc || (utcTime && time.difference == 0)) {
        *out++ = 'Z';
    } else if (time.difference != 0) {
        const int minutes = std::abs(time.difference);
        *out++ = time.difference < 0 ? '-' : '+';
        out = putDigits(out, minutes / 60, 2);
        out = putDigits(out, minutes % 60, 2);
    }
    return out;
}

}  // namespace

std::uint32_t formatTimeText(const TimeRecord& time, char* out, bool utcTime) {
    if (!isInRange(time, utcTime)) {
        return kTimeOutOfRange;
    }
    out = utcTime ? putDigits(out, time.year % 100, 2) : putDigits(out, time.year, 4);
    for (const int field : {time.month, time.day, time.hour, time.minute, time.second}) {
        out = putDigits(out, field, 2);
    }
    if (!utcTime) {
        *out++ = '.';
        out = putDigits(out, time.milliseconds, 3);
    }
    *putDifference(out, time, utcTime) = '\0';
    return 0;
}

std::uint32_t formatQuotedTimeText(const TimeRecord& time, char* out, bool utcTime) {
    if (const std::uint32_t code = formatTimeText(time, out + 1, utcTime); code != 0) {
        return code;
    }
    *out = '"';
    std::memcpy(out + std::strlen(out), "\"", 2);
    return 0;
}

}  // namespace zxqtlv
