// The decoded values of the built-in types.
//
// For: what decoders give and writers of text take: plain records that view the input.
// Not for: owning octets; a value lives as long as the encoding it was decoded from.
#pragma once

#include <cstdint>
#include <variant>

#include "codec/segments.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

struct NullValue {};

struct HugeInteger {
    OctetView octets;  // two's complement, 1 to 65535
};

struct BitString {
    StringContents contents;
};

struct OctetString {
    StringContents contents;
};

// OBJECT IDENTIFIER or RELATIVE-OID.
struct IdentifierArcs {
    OctetView octets;  // sound subidentifiers, 1 to 65535 octets
    bool relative;     // the first subidentifier is one arc and not two
};

// How the characters of a string are read and shown; the numbers are those of the mode argument
// of the character string services.
enum class CharacterMode : std::uint8_t {
    Plain = 0,  // octets up to the first NUL, shown as they stand
    Bmp = 3,
    Ia5 = 17,
    Universal = 38,
    Utf8 = 40,  // up to the first NUL
};

struct CharacterString {
    StringContents contents;
    CharacterMode mode;
};

// UTCTime or GeneralizedTime. Fields are as written; nothing says that they are in range.
struct TimeRecord {
    std::int16_t year;
    std::int16_t month;
    std::int16_t day;
    std::int16_t hour;
    std::int16_t minute;
    std::int16_t second;
    std::uint16_t milliseconds;
    std::int16_t difference;  // minutes from UTC
    bool utc;                 // marked with "Z"
};

struct TimeValue {
    TimeRecord time;
    bool utcTime;  // of the type UTCTime
};

using DecodedValue = std::variant<NullValue, bool, std::int32_t, HugeInteger, BitString,
                                  OctetString, IdentifierArcs, double, CharacterString, TimeValue>;

}  // namespace zxqtlv
