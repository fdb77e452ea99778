// Repairs anything in memory, and checks that what is reported as sound stays as it is.

#include <algorithm>

#include "cli/fix_passes.h"
#include "harness.h"

namespace zxqtlv::fuzz {
namespace {

struct Repaired {
    FixResult result;
    std::uint32_t lastError;
    std::vector<std::uint8_t> octets;
    std::string text;
};

Repaired repair(const std::vector<std::uint8_t>& input, std::uint32_t padSetting) {
    CatchingContext context;
    context.get().padSetting = padSetting;
    Repaired repaired{{0, 0}, 0, input, ""};
    repaired.octets.resize(input.size() + kSpareOctets);
    repaired.octets.shrink_to_fit();
    EncodedBuffer buffer{static_cast<std::int32_t>(repaired.octets.size()), repaired.octets.data()};
    {
        TrapGuard guard(context.get(), GuardKind::LibraryEntry);
        repaired.result = repairEncoding(context.get(), guard, buffer);
    }
    require(buffer.length >= 0 && static_cast<std::size_t>(buffer.length) <= repaired.octets.size(),
            "a repaired encoding is no longer than the input and its spare octets");
    repaired.octets.resize(static_cast<std::size_t>(buffer.length));
    repaired.lastError = context.get().runtimePrivate->lastError;
    repaired.text = context.text();
    return repaired;
}

}  // namespace
}  // namespace zxqtlv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zxqtlv::fuzz;
    if (size < 2) {
        return 0;
    }
    const std::uint32_t pad = (data[0] & 1) != 0 ? data[1] + 1U : 0U;
    const std::vector<std::uint8_t> input(data + 2, data + size);
    const Repaired once = repair(input, pad);
    require(repair(input, pad).text == once.text, "a repair says the same every time");
    // Only length octets change, from 00 to 81.
    for (std::size_t i = 0; i < std::min(input.size(), once.octets.size()); ++i) {
        require(once.octets[i] == input[i] || (input[i] == 0x00 && once.octets[i] == 0x81),
                "a repair writes 81 in the place of 00 and nothing else");
    }
    if (once.result.failure == 0 && once.lastError == 0 && once.result.fixups < 1000 &&
        !once.octets.empty()) {
        const Repaired again = repair(once.octets, pad);
        const bool onlySpare = again.octets.size() > once.octets.size();
        require(again.result.fixups == 0 || onlySpare, "a sound encoding needs no repair");
    }
    return 0;
}
