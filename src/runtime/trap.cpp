#include "runtime/trap.h"

#include "runtime/flags.h"
#include "runtime/memory.h"
#include "runtime/print.h"
#include "runtime/runtime_private.h"

namespace zxqtlv {
namespace {

// A handler receives no argument, so it finds its context here.
ZxqGlobal* volatile trappedContext = nullptr;

constexpr int kSignalUnwind = 2;

bool wantsHandlers(const ZxqGlobal& context) {
    return ((context.encodingFlags | context.decodingFlags) & NoTrapping) == 0;
}

// The System V meaning of `signal`: one delivery, then the default again, nothing blocked.
void installOneShot(int signal, struct sigaction& previous) {
    struct sigaction action {};
    action.sa_handler = &trapSignalHandler;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, &previous);
}

}  // namespace

void trapSignalHandler(int /*signal*/) {
    ZxqGlobal* const context = trappedContext;
    if (context != nullptr && context->jumpBuffer != nullptr) {
        std::longjmp(context->jumpBuffer->environment, kSignalUnwind);
    }
}

TrapGuard::TrapGuard(ZxqGlobal& context, GuardKind kind)
    : context_(context),
      kind_(kind),
      outer_(context.jumpBuffer),
      savedFlags_(context.flags),
      savedCurrentBuffer_(context.runtimePrivate->currentBuffer),
      workMark_(newestWork(context)) {
    if (wantsHandlers(context_) && outer_ == nullptr) {
        trappedContext = &context_;
        installOneShot(SIGBUS, savedBusHandler_);
        installOneShot(SIGSEGV, savedFaultHandler_);
        handlersInstalled_ = true;
    }
}

TrapGuard::~TrapGuard() {
    context_.flags = savedFlags_;
    disarm();
    if (handlersInstalled_) {
        sigaction(SIGBUS, &savedBusHandler_, nullptr);
        sigaction(SIGSEGV, &savedFaultHandler_, nullptr);
        trappedContext = nullptr;
    }
}

void TrapGuard::disarm() {
    if (context_.jumpBuffer == &buffer_) {
        context_.jumpBuffer = outer_;
    }
}

std::int32_t TrapGuard::runErased(void (*call)(void*), void* object) {
    const bool armed = outer_ == nullptr ||
                       (kind_ == GuardKind::LibraryEntry && (context_.flags & TrapEnabled) != 0);
    if (!armed) {
        call(object);
        return 0;
    }
    context_.jumpBuffer = &buffer_;
    const std::int32_t code = runArmed(call, object);
    disarm();
    if (code != 0) {
        printBlock(context_).handOver();
    }
    return code;
}

// A frame of its own: the jump returns into it, and none of its objects changes after `setjmp`.
std::int32_t TrapGuard::runArmed(void (*call)(void*), void* object) {
    if (const int jumped = setjmp(buffer_.environment); jumped != 0) {
        // No destructor ran between the fault and here.
        context_.runtimePrivate->currentBuffer = savedCurrentBuffer_;
        releaseWorkSince(context_, workMark_);
        return jumped;
    }
    try {
        call(object);
    } catch (const TrapFailure& failure) {
        return failure.code;
    }
    return 0;
}

}  // namespace zxqtlv
