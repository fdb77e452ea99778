// Guards: where a fatal code or a memory fault ends the work in progress.
//
// For: one `TrapGuard` on the frame of each guarded call. Fatal codes travel as the exception
// `TrapFailure`; only the signal handler for SIGBUS and SIGSEGV jumps, straight into the innermost
// armed guard, which then also gives back the memory of the work that was cut.
// Not for: cleaning up what a guarded call opened; the caller does, once, after `run` told it the
// code.
//
//     TrapGuard guard(context, GuardKind::Driver);
//     if (const std::int32_t code = guard.run([&] { work(context); }); code != 0) {
//         cleanUp(code);
//     }
#pragma once

#include <csetjmp>
#include <csignal>
#include <cstdint>

#include "runtime/context.h"

namespace zxqtlv {

struct CurrentBuffer;
struct WorkHeader;

// A fatal code on its way to the innermost guard.
struct TrapFailure {
    std::int32_t code;  // a KX code or one of the caller's own statuses, never 0
};

// What `ZxqGlobal::jumpBuffer` points at while a guard is armed.
struct JumpBuffer {
    std::jmp_buf environment;
};

// Who guards. The driver leaves unwinds to an outer guard where there is one; a library entry
// takes them itself whenever TrapEnabled is set.
enum class GuardKind { Driver, LibraryEntry };

// Jumps to the guard of the context whose guard installed the handlers, with the value 2. Without
// an armed guard it returns, and the fault, whose handler is reset by then, ends the process.
void trapSignalHandler(int signal);

class TrapGuard {
  public:
    // Saves jumpBuffer and flags. Installs `trapSignalHandler` for signals 7 and 11 when no guard
    // is active and neither direction's flags have NoTrapping.
    TrapGuard(ZxqGlobal& context, GuardKind kind);
    // Puts back the flags, the jump buffer and the signal handlers.
    ~TrapGuard();
    TrapGuard(const TrapGuard&) = delete;
    TrapGuard& operator=(const TrapGuard&) = delete;

    // No other guard was active: this one reports for the whole run.
    bool isOutermost() const { return outer_ == nullptr; }

    // Runs `work()`. Returns 0, or the code of the failure that ended it: text that waits has then
    // been printed and no guard of this object is armed any more. Where this guard is not the one
    // to take failures they pass through as exceptions.
    template <typename Work>
    std::int32_t run(Work work) {
        return runErased([](void* object) { (*static_cast<Work*>(object))(); }, &work);
    }

  private:
    std::int32_t runErased(void (*call)(void*), void* object);
    std::int32_t runArmed(void (*call)(void*), void* object);
    void disarm();

    ZxqGlobal& context_;
    const GuardKind kind_;
    JumpBuffer* const outer_;
    const std::uint32_t savedFlags_;
    const CurrentBuffer* const savedCurrentBuffer_;
    const WorkHeader* const workMark_;
    bool handlersInstalled_ = false;
    struct sigaction savedBusHandler_ {};
    struct sigaction savedFaultHandler_ {};
    JumpBuffer buffer_{};
};

}  // namespace zxqtlv
