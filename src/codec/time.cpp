#include "codec/time.h"

#include <cstdint>

namespace zxqtlv {
namespace {

constexpr int kLargestZoneHour = 23;
constexpr int kLargestZoneMinute = 59;

bool isDigit(int character) {
    return character >= '0' && character <= '9';
}

// Goes through the characters of a time text.
class TimeReader {
  public:
    explicit TimeReader(const StringContents& text) : cursor_(text) {}

    // The number that `digits` digits spell, or -1 where they are not all there.
    int number(int digits) {
        int value = 0;
        for (; digits > 0; --digits) {
            if (!isDigit(cursor_.peek())) {
                return -1;
            }
            value = value * 10 + (cursor_.next() - '0');
        }
        return value;
    }
    bool atDigit() { return isDigit(cursor_.peek()); }
    bool atEnd() { return cursor_.peek() < 0; }
    bool take(char character) {
        if (cursor_.peek() != character) {
            return false;
        }
        cursor_.next();
        return true;
    }
    bool fraction(std::int64_t unit, std::int64_t& milliseconds);
    bool zone(TimeRecord& time, bool minutesNeeded);

  private:
    OctetCursor cursor_;
};

// Whether the digits from `cursor` on, as a fraction, are `numerator` / `unit` or more. Compares
// digit by digit with the decimal expansion, so that any number of digits is exact.
bool reaches(OctetCursor cursor, std::int64_t numerator, std::int64_t unit) {
    std::int64_t rest = numerator;
    for (; isDigit(cursor.peek()); cursor.next()) {
        rest *= 10;
        const std::int64_t wanted = rest / unit;
        rest %= unit;
        const int digit = cursor.peek() - '0';
        if (digit != wanted) {
            return digit > wanted;
        }
    }
    return rest == 0;
}

// A fraction of a unit of `unit` milliseconds, behind its mark. False where it has no digit.
bool TimeReader::fraction(std::int64_t unit, std::int64_t& milliseconds) {
    if (!atDigit()) {
        return false;
    }
    const OctetCursor start = cursor_;
    constexpr int kExactDigits = 11;  // their number times an hour's milliseconds fits 64 bits
    std::int64_t numerator = 0;
    std::int64_t denominator = 1;
    for (int digits = 0; atDigit(); ++digits) {
        const int digit = cursor_.next() - '0';
        if (digits < kExactDigits) {
            numerator = numerator * 10 + digit;
            denominator *= 10;
        }
    }
    milliseconds = numerator * unit / denominator;
    // Digits that were left out may still reach the next millisecond.
    if (milliseconds + 1 < unit && reaches(start, milliseconds + 1, unit)) {
        ++milliseconds;
    }
    return true;
}

// "Z", +hhmm or -hhmm; the minutes may be missing where they are not needed.
bool TimeReader::zone(TimeRecord& time, bool minutesNeeded) {
    if (take('Z')) {
        time.utc = true;
        return true;
    }
    const bool west = take('-');
    if (!west && !take('+')) {
        return false;
    }
    const int hours = number(2);
    const int minutes = minutesNeeded || atDigit() ? number(2) : 0;
    if (hours < 0 || hours > kLargestZoneHour || minutes < 0 || minutes > kLargestZoneMinute) {
        return false;
    }
    const int difference = hours * 60 + minutes;
    time.difference = static_cast<std::int16_t>(west ? -difference : difference);
    return true;
}

// Reads a two-digit field; false where its digits are not there.
bool readField(TimeReader& reader, std::int16_t& field) {
    const int value = reader.number(2);
    field = static_cast<std::int16_t>(value);
    return value >= 0;
}

// Adds the milliseconds of a fraction to the fields below its unit.
void spread(TimeRecord& time, std::int64_t milliseconds) {
    time.milliseconds = static_cast<std::uint16_t>(milliseconds % 1000);
    const std::int64_t seconds = milliseconds / 1000;
    time.second = static_cast<std::int16_t>(time.second + seconds % 60);
    time.minute = static_cast<std::int16_t>(time.minute + seconds / 60);
}

}  // namespace

std::optional<TimeRecord> parseUtcTime(const StringContents& text) {
    TimeReader reader(text);
    TimeRecord time{};
    if (!readField(reader, time.year) || !readField(reader, time.month) ||
        !readField(reader, time.day) || !readField(reader, time.hour) ||
        !readField(reader, time.minute)) {
        return std::nullopt;
    }
    if (reader.atDigit() && !readField(reader, time.second)) {
        return std::nullopt;
    }
    if (!reader.zone(time, true) || !reader.atEnd()) {
        return std::nullopt;
    }
    return time;
}

std::optional<TimeRecord> parseGeneralizedTime(const StringContents& text) {
    constexpr std::int64_t kHour = 3'600'000;
    constexpr std::int64_t kMinute = 60'000;
    constexpr std::int64_t kSecond = 1000;
    TimeReader reader(text);
    TimeRecord time{};
    const int year = reader.number(4);
    time.year = static_cast<std::int16_t>(year);
    if (year < 0 || !readField(reader, time.month) || !readField(reader, time.day) ||
        !readField(reader, time.hour)) {
        return std::nullopt;
    }
    std::int64_t unit = kHour;
    if (reader.atDigit()) {
        if (!readField(reader, time.minute)) {
            return std::nullopt;
        }
        unit = kMinute;
        if (reader.atDigit()) {
            if (!readField(reader, time.second)) {
                return std::nullopt;
            }
            unit = kSecond;
        }
    }
    if (reader.take('.') || reader.take(',')) {
        std::int64_t milliseconds = 0;
        if (!reader.fraction(unit, milliseconds)) {
            return std::nullopt;
        }
        spread(time, milliseconds);
    }
    if (!reader.atEnd() && (!reader.zone(time, false) || !reader.atEnd())) {
        return std::nullopt;
    }
    return time;
}

}  // namespace zxqtlv
