// The built-in types: one row for each universal type whose contents can be interpreted.
//
// For: finding the row of a universal tag and decoding contents octets with it.
// Not for: text of the values (contents/), or messages; decoding is silent.
//
//     const BuiltInType* type = BuiltInTypeIndex(table).find(5, 0);  // "KXAPI-NULL"
//     type->decode(contents, value);
#pragma once

#include <array>
#include <cstddef>
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

// The rows of a table by their tags, for one look-up per triple.
class BuiltInTypeIndex {
  public:
    explicit BuiltInTypeIndex(const ControlTable& table);

    // The row for a universal tag and that many contents octets; null where no type interprets it.
    const BuiltInType* find(std::int64_t universalTag, std::int32_t contentsOctets) const {
        if (universalTag < 0 || universalTag >= static_cast<std::int64_t>(rows_.size())) {
            return nullptr;
        }
        const BuiltInType* const row = rows_[static_cast<std::size_t>(universalTag)];
        // A row that does not take that many octets is followed by one of the same tag that does.
        return row != nullptr && row->longest >= 0 && contentsOctets > row->longest ? row + 1 : row;
    }

  private:
    std::array<const BuiltInType*, 37> rows_{};
};

}  // namespace zxqtlv
