// The built-in types: one row for each universal type whose contents can be interpreted.
//
// For: finding the row of a universal tag and decoding contents octets with it.
// Not for: text of the values (contents/), or messages; decoding is silent.
//
//     const BuiltInType* type = findBuiltInType(table, 5, 0);
//     decodeTriple(context, *type, triple, header, value);
#pragma once

#include <cstdint>

#include "codec/segments.h"
#include "codec/values.h"
#include "runtime/context.h"
#include "runtime/control_table.h"

namespace zxqtlv {

// Contents octets in, value out. False for contents that are none of the type.
using DecodeFunction = bool (*)(const StringContents& contents, DecodedValue& value);
// Gives back what a decoded value holds besides views; null for values that hold nothing.
using ReleaseValueFunction = void (*)(DecodedValue& value);

struct BuiltInType {
    const char* name;           // "KXAPI-BOOLEAN"; null ends the table
    std::uint8_t universalTag;  // 1 to 36
    SegmentTag segments;        // of the constructed form, None where there is none
    std::int32_t longest;       // octets of contents that it takes; -1 for any number
    DecodeFunction decode;
    ReleaseValueFunction release;
};

// The rows that the tool's control table holds, in the order of their tags; the last has no name.
const BuiltInType* builtInTypes();

// The row for a universal tag and that many contents octets; null where no type interprets it.
const BuiltInType* findBuiltInType(const ControlTable& table, std::int64_t universalTag,
                                   std::int32_t contentsOctets);

}  // namespace zxqtlv
