#include "runtime/report.h"

#include <exception>

#include "runtime/flags.h"
#include "runtime/runtime_private.h"
#include "runtime/trap.h"

namespace zxqtlv {
namespace {

enum class CodeClass { Internal, FatalInput, Misencoding, Ordinary };

CodeClass classify(std::uint32_t code, std::uint32_t flags) {
    switch (code) {
        case kOutOfMemoryCode:
        case kMemoryViolation:
        case kSerializationError:
            return CodeClass::Internal;
        case kCannotOpenInput:
        case kCannotReadInput:
        case kBadOffset:
        case kBadCount:
            return CodeClass::FatalInput;
        case kPrematureEnd:
            return (flags & PrematureEndNotFatal) != 0 ? CodeClass::Misencoding
                                                       : CodeClass::FatalInput;
        case kContentsMisencoded:
        case kBadTagIndex:
        case kCopyError:
        case kLengthTooLong:
        case kEocNotFound:
        case kEocSecondOctet:
        case kHeaderTooLong:
        case kTagOfZero:
        case kConstraintViolation:
            return CodeClass::Misencoding;
        default:
            return CodeClass::Ordinary;
    }
}

// A repair that prints no trace prints no reports either.
bool isHookMasked(std::uint32_t flags) {
    return (flags & (FixEncoding | TraceFixes)) == FixEncoding;
}

bool reachesHook(CodeClass codeClass, std::uint32_t flags) {
    if (codeClass == CodeClass::Internal || isHookMasked(flags)) {
        return false;
    }
    return codeClass == CodeClass::Ordinary || (flags & QuietNonFatal) == 0;
}

}  // namespace

std::uint32_t kxReportError(ZxqGlobal* context, std::uint32_t code, std::uintptr_t detail1,
                            std::int32_t detail2) {
    if (context == nullptr) {
        return kNullArgument;
    }
    context->runtimePrivate->lastError = code;
    const CodeClass codeClass = classify(code, context->flags);
    if (context->messageHook != nullptr && reachesHook(codeClass, context->flags)) {
        context->messageHook(context, code, detail1, detail2);
    }
    const bool unwinds = codeClass == CodeClass::Internal || codeClass == CodeClass::FatalInput;
    // A failure on its way to its guard is the first one; what fails while it cleans up is not.
    const bool alreadyUnwinding = std::uncaught_exceptions() > 0;
    if (unwinds && !alreadyUnwinding && (context->flags & TrapEnabled) != 0 &&
        context->jumpBuffer != nullptr) {
        throw TrapFailure{static_cast<std::int32_t>(code)};
    }
    return code;
}

std::uint32_t kxLastError(const ZxqGlobal* context) {
    return context == nullptr || context->runtimePrivate == nullptr
               ? static_cast<std::uint32_t>(kNullArgument)
               : context->runtimePrivate->lastError;
}

}  // namespace zxqtlv
