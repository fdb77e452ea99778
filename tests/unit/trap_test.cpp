#include "runtime/trap.h"

#include "runtime/flags.h"
#include "runtime/memory.h"
#include "runtime/report.h"
#include "unit/fixture.h"

namespace zxqtlv {
namespace {

using test::CountedDefaults;
using test::TestContext;

void ownHandler(int /*signal*/) {}

// What handles both signals; null where they differ.
auto handlerOfBoth() {
    struct sigaction bus {};
    struct sigaction fault {};
    sigaction(SIGBUS, nullptr, &bus);
    sigaction(SIGSEGV, nullptr, &fault);
    return bus.sa_handler == fault.sa_handler ? bus.sa_handler : nullptr;
}

// A context with trapping on, in a process that handles the signals on its own.
struct TrapContext : TestContext {
    TrapContext() {
        struct sigaction action {};
        action.sa_handler = &ownHandler;
        sigaction(SIGBUS, &action, &bus);
        sigaction(SIGSEGV, &action, &fault);
        global.flags = TrapEnabled;
        global.encodingFlags = global.decodingFlags = 0;
    }
    ~TrapContext() {
        EXPECT_EQ(handlerOfBoth(), &ownHandler);
        EXPECT_EQ(global.jumpBuffer, nullptr);
        sigaction(SIGBUS, &bus, nullptr);
        sigaction(SIGSEGV, &fault, nullptr);
    }
    struct sigaction bus {};
    struct sigaction fault {};
};

TEST(TrapGuard, EndsTheWorkAtTheFirstFatalCode) {
    for (const GuardKind kind : {GuardKind::Driver, GuardKind::LibraryEntry}) {
        TrapContext context;
        ZxqGlobal& global = context.global;
        const int blocks = CountedDefaults::blocks;
        bool wentOn = false;
        {
            TrapGuard guard(global, kind);
            EXPECT_TRUE(guard.isOutermost());
            const std::int32_t code = guard.run([&] {
                const ContextBlock block(global, 100);
                WorkArray<int> work(global);
                EXPECT_TRUE(work.push(1));
                global.flags |= QuietNonFatal | TraceFixes;
                printBlock(global).append("waiting");
                kxReportError(&global, kCannotReadInput);
                wentOn = true;
            });
            EXPECT_EQ(code, 46);
            EXPECT_FALSE(wentOn);
            EXPECT_TRUE(printBlock(global).empty());
            EXPECT_EQ(CountedDefaults::blocks, blocks);
            // Clean-up that fails on its own must come back to the cleaner.
            EXPECT_EQ(kxReportError(&global, kCannotOpenInput), 45U);
        }
        EXPECT_EQ(global.flags, TrapEnabled);
    }
}

TEST(TrapGuard, LetsWorkGoOnWhileTrappingIsOff) {
    TrapContext context;
    EXPECT_EQ(kxReportError(&context.global, kCannotReadInput), 46U);
    context.global.flags = NoShort;
    bool wentOn = false;
    EXPECT_EQ(TrapGuard(context.global, GuardKind::Driver).run([&] {
        kxReportError(&context.global, kCannotReadInput);
        context.global.flags |= NoTitles;
        wentOn = true;
    }),
              0);
    EXPECT_TRUE(wentOn);
    EXPECT_EQ(context.global.flags, NoShort);
}

TEST(TrapGuard, TakesFailuresAsItsKindDoesWhenNested) {
    const struct {
        GuardKind kind;
        std::uint32_t flags;
        std::int32_t thrown, inner, outer;
    } rows[] = {{GuardKind::Driver, 0x40, 46, -1, 46},      {GuardKind::Driver, 0, 9, -1, 9},
                {GuardKind::LibraryEntry, 0x40, 46, 46, 0}, {GuardKind::LibraryEntry, 0, 9, -1, 9},
                {GuardKind::LibraryEntry, 0x40, 0, 0, 0},   {GuardKind::Driver, 0x40, 0, 0, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        TrapContext context;
        ZxqGlobal& global = context.global;
        global.flags = row.flags;
        std::int32_t inner = -1;
        const std::int32_t outer = TrapGuard(global, GuardKind::Driver).run([&] {
            JumpBuffer* const outerBuffer = global.jumpBuffer;
            try {
                TrapGuard guard(global, row.kind);
                EXPECT_FALSE(guard.isOutermost());
                inner = guard.run([&] {
                    const bool own = row.kind == GuardKind::LibraryEntry && row.flags != 0;
                    EXPECT_EQ(global.jumpBuffer != outerBuffer, own);
                    EXPECT_EQ(handlerOfBoth(), &trapSignalHandler);
                    global.flags |= NoAddition;
                    if (row.thrown != 0) {
                        throw TrapFailure{row.thrown};
                    }
                });
            } catch (const TrapFailure&) {
                EXPECT_EQ(global.flags, row.flags);
                throw;
            }
            EXPECT_EQ(handlerOfBoth(), &trapSignalHandler);
            EXPECT_EQ(global.jumpBuffer, outerBuffer);
            EXPECT_EQ(global.flags, row.flags);
        });
        EXPECT_EQ(inner, row.inner);
        EXPECT_EQ(outer, row.outer);
    }
}

TEST(TrapGuard, InstallsHandlersOnlyWhereNothingForbidsIt) {
    const struct {
        std::uint32_t encoding, decoding;
        bool installed;
    } rows[] = {{0, 0, true}, {2, 2, true}, {0x200, 0, false}, {0, 0x200, false}};
    for (const auto& row : rows) {
        TrapContext context;
        context.global.encodingFlags = row.encoding;
        context.global.decodingFlags = row.decoding;
        const TrapGuard guard(context.global, GuardKind::Driver);
        EXPECT_EQ(handlerOfBoth(), row.installed ? &trapSignalHandler : &ownHandler);
        trapSignalHandler(SIGSEGV);  // comes back: nothing is armed
    }
}

TEST(TrapGuard, TurnsAMemoryFaultIntoCodeTwo) {
    for (const int signal : {SIGSEGV, SIGBUS, SIGSEGV}) {
        SCOPED_TRACE(signal);
        TrapContext context;
        ZxqGlobal& global = context.global;
        global.flags = NoShort;
        WorkArray<int> before(global);
        ASSERT_TRUE(before.push(5));
        const int blocks = CountedDefaults::blocks;
        {
            TrapGuard guard(global, GuardKind::Driver);
            const std::int32_t code = guard.run([&] {
                // Neither destructor runs: the guard itself gives the memory back.
                WorkArray<int> work(global);
                WorkArray<std::int64_t> more(global);
                for (int i = 0; i < 1000; ++i) {
                    EXPECT_TRUE(work.push(i) && more.push(i));
                }
                const CurrentBuffer buffer{};
                global.runtimePrivate->currentBuffer = &buffer;
                global.flags |= QuietNonFatal;
                printBlock(global).append("waiting");
                raise(signal);
                ADD_FAILURE() << "went on";
            });
            EXPECT_EQ(code, 2);
            EXPECT_EQ(CountedDefaults::blocks, blocks);
            EXPECT_EQ(global.runtimePrivate->currentBuffer, nullptr);
            EXPECT_TRUE(printBlock(global).empty());
        }
        EXPECT_EQ(global.flags, NoShort);
        sigset_t blocked;
        sigprocmask(SIG_BLOCK, nullptr, &blocked);
        EXPECT_EQ(sigismember(&blocked, signal), 0);

        ASSERT_TRUE(before.push(6));
        EXPECT_EQ(before[0], 5);
        zxqprint(&global, " after");
        EXPECT_EQ(context.takeText(), "waiting after");
        EXPECT_TRUE(TestContext::takeMessages().empty());
        global.flags = TrapEnabled;
        auto fail = [&] { kxReportError(&global, kBadCount, 0, 3); };
        EXPECT_EQ(TrapGuard(global, GuardKind::Driver).run(fail), 48);
    }
}

TEST(TrapGuard, LeavesTheWorkOfAnOuterGuardToIt) {
    TrapContext context;
    ZxqGlobal& global = context.global;
    TrapGuard(global, GuardKind::Driver).run([&] {
        WorkArray<int> work(global);
        EXPECT_TRUE(work.push(5));
        const int blocks = CountedDefaults::blocks;
        auto fault = [&] {
            WorkArray<int> cut(global);
            EXPECT_TRUE(cut.push(6));
            raise(SIGSEGV);
        };
        EXPECT_EQ(TrapGuard(global, GuardKind::LibraryEntry).run(fault), 2);
        EXPECT_EQ(CountedDefaults::blocks, blocks);
        EXPECT_EQ(work.back(), 5);
    });
}

}  // namespace
}  // namespace zxqtlv
