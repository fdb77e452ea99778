// The name of a triple's tag: "INTEGER", "[APPLICATION 3]", "[0]".
//
// For: the names that every layout prints, and the class and form of an identifier.
// Not for: contents. The name depends on class and tag number only, never on the form: 30 and 10
// are both "SEQUENCE".
//
//     TagText storage;
//     tagName(context, triple, header, storage);  // "[128]" for 9F 81 00 ...
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "runtime/context.h"
#include "tlv/header.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

inline constexpr std::string_view kEndOfContentsName = "END-OF-CONTENTS";

// The standard names of the universal tag numbers (X.680, 8.4); empty where there is none.
inline constexpr std::array<std::string_view, 37> kUniversalTagNames{
    kEndOfContentsName,
    "BOOLEAN",
    "INTEGER",
    "BIT STRING",
    "OCTET STRING",
    "NULL",
    "OBJECT IDENTIFIER",
    "ObjectDescriptor",
    "EXTERNAL",
    "REAL",
    "ENUMERATED",
    "EMBEDDED PDV",
    "UTF8String",
    "RELATIVE-OID",
    "TIME",
    "",
    "SEQUENCE",
    "SET",
    "NumericString",
    "PrintableString",
    "TeletexString",
    "VideotexString",
    "IA5String",
    "UTCTime",
    "GeneralizedTime",
    "GraphicString",
    "VisibleString",
    "GeneralString",
    "UniversalString",
    "CHARACTER STRING",
    "BMPString",
    "DATE",
    "TIME-OF-DAY",
    "DATE-TIME",
    "DURATION",
    "OID-IRI",
    "RELATIVE-OID-IRI",
};

inline std::string_view universalTagName(std::int64_t tagNumber) {
    const bool known =
        tagNumber >= 0 && tagNumber < static_cast<std::int64_t>(kUniversalTagNames.size());
    return known ? kUniversalTagNames[static_cast<std::size_t>(tagNumber)] : std::string_view();
}

// Characters that may be read from the start of a name: blanks follow it, so that a line printer
// can copy it with what fills its column, however long it is.
inline constexpr std::size_t kTagField = 48;

// Holds a bracketed tag while it is printed.
using TagText = std::array<char, kTagField>;

// A name with its blanks.
constexpr TagText paddedName(std::string_view name) {
    TagText padded{};
    for (std::size_t i = 0; i < padded.size(); ++i) {
        padded[i] = i < name.size() ? name[i] : ' ';
    }
    return padded;
}

// The names of the universal tag numbers with their blanks.
inline constexpr auto kNameFields = [] {
    std::array<TagText, kUniversalTagNames.size()> fields{};
    for (std::size_t tag = 0; tag < fields.size(); ++tag) {
        fields[tag] = paddedName(kUniversalTagNames[tag]);
    }
    return fields;
}();

// What stands for the name of a triple that starts with 00.
inline constexpr TagText kUnknownField = paddedName("Unknown");
inline constexpr std::string_view kUnknownName{kUnknownField.data(), 7};

// The name of the tag whose header was read at `triple`: a fixed text, or one written into
// `storage`, never empty; kTagField characters may be read. A view of null means no name: nothing
// remains, the tag number cannot be read (KX017E has been raised), or a universal 0 is followed by
// a non-zero octet (KX037E).
std::string_view rareTagName(ZxqGlobal& context, OctetView triple, const TripleHeader& header,
                             TagText& storage);
inline std::string_view tagName(ZxqGlobal& context, OctetView triple, const TripleHeader& header,
                                TagText& storage) {
    // Nearly every tag is universal and has a name.
    if (header.tagClass == TagClass::Universal && header.tagNumber > 0) {
        if (const std::string_view name = universalTagName(header.tagNumber); !name.empty()) {
            return {kNameFields[static_cast<std::size_t>(header.tagNumber)].data(), name.size()};
        }
    }
    return rareTagName(context, triple, header, storage);
}

// The same as a NUL-terminated text from the context's allocate function, to be given back with
// `freeText`; null for no name, and when memory is exhausted (KX001S has been raised).
char* formatTagText(ZxqGlobal* context, const std::uint8_t* identifier, std::uint32_t remaining);

// Gives back a text made by the contents services; null is allowed.
void freeText(ZxqGlobal* context, char* text);

// The class of identifier number `index`, counted from 1 in the order of a depth-first walk of the
// encoding. `Unknown` when nothing remains, or, after raising KX019E, for an index that the
// encoding does not have.
TagClass getTagClass(ZxqGlobal* context, const std::uint8_t* tlv, std::uint32_t remaining,
                     std::int32_t index);

// Whether the first identifier octet has the constructed bit; false when nothing remains.
bool isConstructed(const std::uint8_t* tlv, std::uint32_t remaining);

}  // namespace zxqtlv
