#include "cli/fix_passes.h"

#include "runtime/flags.h"
#include "runtime/print.h"
#include "runtime/runtime_private.h"
#include "tlv/header.h"
#include "tlv/hexadecimal_layout.h"

namespace zxqtlv {
namespace {

constexpr std::int32_t kMostFixups = 999;  // with more, no further pass is made

bool isInternal(std::int32_t code) {
    return code >= 1 && code <= 3;
}

// A first triple that tells where it ends needs no spare octets. Otherwise the walk stops in front
// of them.
void measureFirstTriple(ZxqGlobal& context, EncodedBuffer& buffer) {
    const OctetView first = buffer.view();
    const TripleHeader header = readHeader(first, tagMask(context));
    const std::int32_t octets = headerLength(context, first, header);
    const std::int32_t length =
        octets == kUnreadable ? kUnreadable : lengthChecked(context, first, header);
    if (length >= 1 || length == kUnreadable) {
        buffer.length -= kSpareOctets;
    } else {
        context.runtimePrivate->stopPoint = kSpareOctets;
    }
}

// One walk over the whole buffer. Returns the fatal code that cut it, or 0.
std::int32_t runPass(ZxqGlobal& context, TrapGuard& guard, EncodedBuffer& buffer) {
    RuntimePrivate& state = *context.runtimePrivate;
    context.flags |= FixEncoding;
    context.flags &= ~static_cast<std::uint32_t>(QuietNonFatal);
    state.lastError = 0;
    state.fixupCount = 0;
    return guard.run([&] {
        printBlock(context).append("\nFIXING THE INPUT ENCODING\n");
        printHexadecimal(context, buffer);
    });
}

}  // namespace

FixResult repairEncoding(ZxqGlobal& context, TrapGuard& guard, EncodedBuffer& buffer) {
    const RuntimePrivate& state = *context.runtimePrivate;
    FixResult result{0, 0};
    result.failure = guard.run([&] { measureFirstTriple(context, buffer); });
    if (result.failure != 0) {
        return result;
    }
    const std::int32_t lengthBefore = buffer.length;
    bool cut = false;
    while (result.fixups <= kMostFixups) {
        const std::int32_t code = runPass(context, guard, buffer);
        if (isInternal(code)) {
            result.failure = code;
            return result;
        }
        cut = code != 0;
        result.fixups += static_cast<std::int32_t>(state.fixupCount);
        if (state.fixupCount == 0) {
            break;
        }
    }
    if (cut) {
        buffer.length = lengthBefore - state.stopPoint;
    } else if (lengthBefore - buffer.length < state.stopPoint) {
        ++result.fixups;
    }
    return result;
}

}  // namespace zxqtlv
