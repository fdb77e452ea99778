#include "codec/built_in_types.h"

#include "codec/real.h"
#include "codec/time.h"

namespace zxqtlv {
namespace {

constexpr std::int32_t kAnyLength = -1;
constexpr std::int32_t kShortInteger = 4;      // octets of a signed 32-bit value
constexpr std::int32_t kLongest16Bit = 65535;  // octets that a 16-bit length counts

bool decodeBoolean(const StringContents& contents, DecodedValue& value) {
    if (contents.octets.remaining != 1) {
        return false;
    }
    value = contents.octets.position[0] != 0;
    return true;
}

bool decodeInteger(const StringContents& contents, DecodedValue& value) {
    if (contents.octets.remaining < 1) {
        return false;
    }
    std::uint32_t bits = (contents.octets.position[0] & 0x80) != 0 ? ~0U : 0U;
    for (std::int32_t i = 0; i < contents.octets.remaining; ++i) {
        bits = (bits << 8) | contents.octets.position[i];
    }
    value = static_cast<std::int32_t>(bits);
    return true;
}

bool decodeHugeInteger(const StringContents& contents, DecodedValue& value) {
    value = HugeInteger{contents.octets};
    return contents.octets.remaining <= kLongest16Bit;
}

bool decodeBitString(const StringContents& contents, DecodedValue& value) {
    value = BitString{contents};
    return true;
}

bool decodeOctetString(const StringContents& contents, DecodedValue& value) {
    value = OctetString{contents};
    return true;
}

bool decodeNull(const StringContents& contents, DecodedValue& value) {
    value = NullValue{};
    return contents.octets.remaining == 0;
}

// X.690, 8.19.2: a subidentifier ends with an octet below 80 and does not start with 80.
bool areArcs(OctetView octets) {
    if (octets.remaining > kLongest16Bit) {
        return false;
    }
    bool atStart = true;
    for (std::int32_t i = 0; i < octets.remaining; ++i) {
        const std::uint8_t octet = octets.position[i];
        if (atStart && octet == 0x80) {
            return false;
        }
        atStart = octet < 0x80;
    }
    return octets.remaining > 0 && atStart;
}

template <bool Relative>
bool decodeArcs(const StringContents& contents, DecodedValue& value) {
    value = IdentifierArcs{contents.octets, Relative};
    return areArcs(contents.octets);
}

bool decodeRealValue(const StringContents& contents, DecodedValue& value) {
    const std::optional<double> number = decodeReal(contents.octets);
    value = number.value_or(0.0);
    return number.has_value();
}

template <CharacterMode Mode, int CharacterOctets = 1>
bool decodeCharacters(const StringContents& contents, DecodedValue& value) {
    value = CharacterString{contents, Mode};
    return contents.valueOctets % CharacterOctets == 0;
}

bool decodeUtcTime(const StringContents& contents, DecodedValue& value) {
    const std::optional<TimeRecord> time = parseUtcTime(contents);
    value = TimeValue{time.value_or(TimeRecord{}), true};
    return time.has_value();
}

bool decodeGeneralizedTime(const StringContents& contents, DecodedValue& value) {
    const std::optional<TimeRecord> time = parseGeneralizedTime(contents);
    value = TimeValue{time.value_or(TimeRecord{}), false};
    return time.has_value();
}

constexpr SegmentTag kNone = SegmentTag::None;
constexpr SegmentTag kBits = SegmentTag::BitString;
constexpr SegmentTag kOctets = SegmentTag::OctetString;

constexpr DecodeFunction kPlainText = &decodeCharacters<CharacterMode::Plain>;
constexpr DecodeFunction kUtf8Text = &decodeCharacters<CharacterMode::Utf8>;

constexpr BuiltInType kTypes[] = {
    {"KXAPI-BOOLEAN", 1, kNone, kAnyLength, &decodeBoolean, nullptr},
    {"KXAPI-INTEGER", 2, kNone, kShortInteger, &decodeInteger, nullptr},
    {"KXAPI-HUGE-INTEGER", 2, kNone, kAnyLength, &decodeHugeInteger, nullptr},
    {"KXAPI-BITSTRING", 3, kBits, kAnyLength, &decodeBitString, nullptr},
    {"KXAPI-OCTETSTRING", 4, kOctets, kAnyLength, &decodeOctetString, nullptr},
    {"KXAPI-NULL", 5, kNone, kAnyLength, &decodeNull, nullptr},
    {"KXAPI-OBJECTIDENTIFIER", 6, kNone, kAnyLength, &decodeArcs<false>, nullptr},
    {"KXAPI-OBJECTDESCRIPTOR", 7, kOctets, kAnyLength, kPlainText, nullptr},
    {"KXAPI-REAL", 9, kNone, kAnyLength, &decodeRealValue, nullptr},
    {"KXAPI-UTF8STRING", 12, kOctets, kAnyLength, kUtf8Text, nullptr},
    {"KXAPI-RELATIVEOID", 13, kNone, kAnyLength, &decodeArcs<true>, nullptr},
    {"KXAPI-TIME", 14, kOctets, kAnyLength, kPlainText, nullptr},
    {"KXAPI-NUMERICSTRING", 18, kOctets, kAnyLength, kPlainText, nullptr},
    {"KXAPI-PRINTABLESTRING", 19, kOctets, kAnyLength, kPlainText, nullptr},
    {"KXAPI-TELETEXSTRING", 20, kOctets, kAnyLength, kPlainText, nullptr},
    {"KXAPI-VIDEOTEXSTRING", 21, kOctets, kAnyLength, kPlainText, nullptr},
    {"KXAPI-IA5STRING", 22, kOctets, kAnyLength, &decodeCharacters<CharacterMode::Ia5>, nullptr},
    {"KXAPI-UTCTIME", 23, kOctets, kAnyLength, &decodeUtcTime, nullptr},
    {"KXAPI-GENTIME", 24, kOctets, kAnyLength, &decodeGeneralizedTime, nullptr},
    {"KXAPI-GRAPHICSTRING", 25, kOctets, kAnyLength, kPlainText, nullptr},
    {"KXAPI-VISIBLESTRING", 26, kOctets, kAnyLength, kPlainText, nullptr},
    {"KXAPI-GENERALSTRING", 27, kOctets, kAnyLength, kPlainText, nullptr},
    {"KXAPI-UNIVERSALSTRING", 28, kOctets, kAnyLength,
     &decodeCharacters<CharacterMode::Universal, 4>, nullptr},
    {"KXAPI-BMPSTRING", 30, kOctets, kAnyLength, &decodeCharacters<CharacterMode::Bmp, 2>, nullptr},
    {"KXAPI-DATE", 31, kOctets, kAnyLength, kPlainText, nullptr},
    {"KXAPI-TIME-OF-DAY", 32, kOctets, kAnyLength, kPlainText, nullptr},
    {"KXAPI-DATE-TIME", 33, kOctets, kAnyLength, kPlainText, nullptr},
    {"KXAPI-INTERVAL-DURATION", 34, kOctets, kAnyLength, kPlainText, nullptr},
    {"KXAPI-OID-IRI", 35, kOctets, kAnyLength, kUtf8Text, nullptr},
    {"KXAPI-RELATIVE-OID-IRI", 36, kOctets, kAnyLength, kUtf8Text, nullptr},
    {nullptr, 0, kNone, 0, nullptr, nullptr},
};

}  // namespace

const BuiltInType* builtInTypes() {
    return kTypes;
}

BuiltInTypeIndex::BuiltInTypeIndex(const ControlTable& table) {
    const BuiltInType* row = table.builtInTypes;
    for (; row != nullptr && row->name != nullptr; ++row) {
        const BuiltInType*& first = rows_[row->universalTag];
        first = first == nullptr ? row : first;
    }
}

}  // namespace zxqtlv
