// From an open file to the octets of an encoding.
//
// For: reading a whole file or a slice of it, raw (binary) or spelled in hexadecimal (text).
// Not for: opening files, or reporting; the code that comes back is the caller's to report.
//
// Binary and text slices differ on purpose: in a binary file offset and count are octets and a
// count past the end is cut back; in a text file they are digits and must all be there.
#pragma once

#include <cstdint>
#include <cstdio>

#include "runtime/context.h"
#include "runtime/memory.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// Owns the octets of a loaded encoding.
struct LoadedInput {
    ContextBlock octets;
    std::int32_t length = 0;  // octets, spare ones of a binary file included

    EncodedBuffer buffer() const { return {length, octets.data()}; }
    void reset() {
        octets.reset();
        length = 0;
    }
};

struct Slice {
    std::int32_t offset = 0;
    std::int32_t count = 0;  // 0 for all up to the end
};

// Reads `slice` of the file; whether it is text is read from TextInput. A binary file gets `spare`
// zero octets (0 or more) behind its own. Returns 0, kOutOfMemoryCode, or a KX code: 46 for a
// file that is empty, cannot be positioned in, comes back short or is 2 GiB or longer in the part
// wanted; 47 and 48 for a slice that is not there; 49 for a character that is no hexadecimal
// digit. `input` is empty on every failure, but for the octets before such a character.
std::uint32_t loadInput(ZxqGlobal& context, std::FILE* stream, Slice slice, std::int32_t spare,
                        LoadedInput& input);

}  // namespace zxqtlv
