#include "tlv/padding.h"

#include <optional>

#include "runtime/flags.h"
#include "runtime/print.h"
#include "runtime/runtime_private.h"

namespace zxqtlv {
namespace {

struct PadBytes {
    std::uint8_t reported;
    std::uint8_t alternative;  // counts as well; equal to the other where only one counts
};

std::optional<PadBytes> padBytesAt(const ZxqGlobal& context, OctetView place) {
    const bool trapped = (context.flags & TrapEnabled) != 0;
    if (!trapped && !context.runtimePrivate->automaticPadding) {
        return std::nullopt;
    }
    if (context.padSetting != 0) {
        const auto byte = static_cast<std::uint8_t>(context.padSetting - 1);
        return PadBytes{byte, byte};
    }
    const std::uint8_t first = place.position[0];
    if (trapped || (first != 0x00 && first != 0xFF)) {
        return std::nullopt;
    }
    return PadBytes{first, static_cast<std::uint8_t>(~first)};
}

void announce(PrintBlock& out, std::uint8_t byte, OctetView run) {
    out.append("\n\nPadding byte '0x");
    // 16 shows as 010: one digit more than it needs, and known so to the readers of listings.
    if (byte <= 16) {
        out.append('0');
    }
    char digits[2];
    writeHexPair(digits, byte);
    out.append(byte < 16 ? std::string_view(digits + 1, 1) : std::string_view(digits, 2));
    out.append("' detected, skipping ");
    out.appendDecimal(run.remaining);
    out.append(" bytes ...\n\n");
    out.appendHex(run.position, static_cast<std::size_t>(run.remaining));
}

}  // namespace

std::int32_t skipPadding(ZxqGlobal& context, OctetView place) {
    if (place.remaining <= 0) {
        return 0;
    }
    const std::optional<PadBytes> bytes = padBytesAt(context, place);
    if (!bytes) {
        return 0;
    }
    std::int32_t count = 0;
    while (count < place.remaining && (place.position[count] == bytes->reported ||
                                       place.position[count] == bytes->alternative)) {
        ++count;
    }
    if (count > 0) {
        announce(printBlock(context), bytes->reported, {place.position, count});
    }
    return count;
}

}  // namespace zxqtlv
