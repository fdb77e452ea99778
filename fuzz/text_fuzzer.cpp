// Loads text and binary input, whole and in slices, and checks that the hexadecimal text of a file
// is listed like the file.

#include <cstring>

#include "cli/file.h"
#include "cli/loader.h"
#include "harness.h"

namespace zxqtlv::fuzz {
namespace {

struct Loaded {
    std::uint32_t code;
    std::string octets;
};

Loaded load(const std::string& content, bool text, Slice slice, std::int32_t spare) {
    CatchingContext context;
    context.get().flags |= text ? TextInput : 0U;
    // One octet more, for a stream of an empty file cannot be opened in memory.
    std::string copy = content;
    const File stream(fmemopen(copy.data(), copy.size(), "r"));
    if (!stream) {
        return {0, ""};
    }
    LoadedInput input;
    const std::uint32_t code = loadInput(context.get(), stream.get(), slice, spare, input);
    const auto* const start = reinterpret_cast<const char*>(input.octets.data());
    return {code,
            start == nullptr ? "" : std::string(start, static_cast<std::size_t>(input.length))};
}

std::string hexOf(const std::string& octets, std::uint8_t seed) {
    std::string text;
    for (const char octet : octets) {
        char pair[3];
        std::snprintf(pair, sizeof pair, seed & 1 ? "%02x" : "%02X",
                      static_cast<unsigned>(static_cast<unsigned char>(octet)));
        text += pair[0];
        // White space may stand anywhere, also inside a pair.
        text += (seed & 2) != 0 ? "\n" : "";
        text += pair[1];
        text += (seed & 4) != 0 ? " \t" : "";
    }
    return text;
}

bool isKnownCode(std::uint32_t code) {
    return code == 0 || code == 1 || (code >= 46 && code <= 49);
}

}  // namespace
}  // namespace zxqtlv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zxqtlv;
    using namespace zxqtlv::fuzz;
    if (size < 10) {
        return 0;
    }
    const std::uint8_t seed = data[0];
    Slice slice;
    std::memcpy(&slice.offset, data + 1, 4);
    std::memcpy(&slice.count, data + 5, 4);
    if ((seed & 8) != 0) {
        slice = {slice.offset & 63, slice.count & 63};
    }
    const std::string content(reinterpret_cast<const char*>(data) + 9, size - 9);
    for (const bool text : {false, true}) {
        const Loaded whole = load(content, text, {}, 0);
        const Loaded part = load(content, text, slice, 0);
        require(isKnownCode(whole.code) && isKnownCode(part.code), "loading has six codes");
        require(part.code == 0 || part.code == 49 || part.octets.empty(),
                "what cannot be loaded leaves nothing behind");
    }
    const Loaded binary = load(content, false, slice, 0);
    if (binary.code == 0) {
        require(content.substr(static_cast<std::size_t>(slice.offset),
                               static_cast<std::size_t>(slice.count == 0 ? -1 : slice.count)) ==
                    binary.octets,
                "a slice is a part of the file");
    }
    const Loaded spare = load(content, false, {}, 16);
    require(spare.octets == content + std::string(16, '\0'), "spare octets are zero");
    const Loaded spelled = load(hexOf(content, seed), true, {}, 0);
    require(spelled.code == 0 && spelled.octets == content, "text spells the octets of the file");
    return 0;
}
