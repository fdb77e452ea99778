#include "runtime/context.h"

#include "runtime/memory.h"
#include "support/process.h"
#include "unit/fixture.h"

namespace zxqtlv {
namespace {

using test::CountedDefaults;

int termHookCalls = 0;

void initialise(ZxqGlobal* context) {
    context->runtimePrivate->ownedBlocks[1] = context->allocate(16);
    context->runtimePrivate->tableTermHook = [](ZxqGlobal*) { ++termHookCalls; };
}

void initialiseHalfway(ZxqGlobal* context) {
    initialise(context);
    context->runtimePrivate->initStatus = 51;
}

const ControlTable kTable{&initialise, nullptr, 15, 0x1234};

TEST(ContextInit, RefusesWhatItCannotUseAndKeepsNoMemory) {
    static const ControlTable older{nullptr, nullptr, 14, 0};
    static const ControlTable newer{&initialise, nullptr, 16, 0};
    static const ControlTable failing{&initialiseHalfway, nullptr, 15, 0};
    const struct {
        const ControlTable* table;
        int allocations;
        std::int32_t code;
        int termHookCalls;
    } rows[] = {{nullptr, -1, 20, 0}, {&older, -1, 7, 0}, {&newer, -1, 7, 0},
                {&kTable, 0, 8, 0},   {nullptr, 0, 8, 0}, {&failing, -1, 51, 1}};
    EXPECT_EQ(zxqinit(nullptr, &kTable), 6);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.code);
        const CountedDefaults defaults;
        CountedDefaults::left = row.allocations;
        termHookCalls = 0;
        ZxqGlobal context{};
        EXPECT_EQ(zxqinit(&context, row.table), row.code);
        zxqterm(&context);
        EXPECT_EQ(context.runtimePrivate, nullptr);
        EXPECT_EQ(CountedDefaults::blocks, 0);
        EXPECT_EQ(termHookCalls, row.termHookCalls);
        CountedDefaults::left = -1;
        EXPECT_EQ(zxqinit(&context, &kTable), 0);
        zxqterm(&context);
    }
}

int printNothing(std::FILE* /*stream*/, const char* /*format*/, ...) {
    return 0;
}

TEST(ContextInit, CopiesTheDefaultsAndKeepsNothingButTheUserWord) {
    const CountedDefaults restored;
    const ProcessDefaults own{&std::malloc, &std::free, &std::fprintf, stdout, 35};
    const ProcessDefaults other{&CountedDefaults::allocate,
                                &CountedDefaults::release,
                                &printNothing,
                                stderr,
                                132,
                                99999,
                                -3,
                                true};
    for (const bool set : {false, true}) {
        processDefaults() = set ? other : ProcessDefaults{};
        const ProcessDefaults& expected = set ? other : own;
        ZxqGlobal context{};
        context.flags = context.padSetting = context.encodingRules = context.savedFlags = 9;
        context.userWord = context.encodingFlags = context.decodingFlags = 0xABCD;
        context.messageHook = [](auto...) { return 0U; };
        ASSERT_EQ(zxqinit(&context, &kTable), 0);
        EXPECT_EQ(context.userWord, set ? 0U : 0xABCDU);
        EXPECT_EQ(context.flags | context.padSetting | context.encodingRules | context.savedFlags,
                  0U);
        EXPECT_EQ(context.encodingFlags, 0x200U);
        EXPECT_EQ(context.decodingFlags, 0x200U);
        EXPECT_EQ(context.messageHook, nullptr);
        EXPECT_EQ(context.allocate, expected.allocate);
        EXPECT_EQ(context.release, expected.release);
        EXPECT_EQ(context.printFunction, expected.printFunction);
        EXPECT_EQ(context.outputStream, expected.outputStream);
        EXPECT_EQ(context.lineWidth, expected.lineWidth);
        EXPECT_EQ(processDefaults().lineWidth, expected.lineWidth);
        EXPECT_EQ(context.allocationLimit, expected.allocationLimit);
        EXPECT_EQ(context.memoryTuning2, expected.memoryTuning2);
        EXPECT_EQ(context.runtimePrivate->tableFlags, 0x1234);
        EXPECT_EQ(context.runtimePrivate->memoryBlockCount, 10U);
        EXPECT_EQ(context.runtimePrivate->memoryBlockSize, 64U);
        void* const block = contextAllocate(context, 100000);
        EXPECT_EQ(block == nullptr, set);
        contextRelease(context, block);
        zxqterm(&context);
    }
}

TEST(ContextTerm, GivesBackAllThatHangsOnTheContextOnce) {
    const test::TemporaryFolder folder;
    const CountedDefaults defaults;
    termHookCalls = 0;
    ZxqGlobal context{};
    ASSERT_EQ(zxqinit(&context, &kTable), 0);
    context.runtimePrivate->scratchBlock = context.allocate(8);
    context.savedFlags = 0x202;
    context.outputStream = stderr;
    ASSERT_EQ(zxqOpenTraceFile(&context, (folder / "trace").c_str()), 0);
    printBlock(context).append("waiting");
    // What was there at the start releases, whatever the caller put in its place since.
    context.release = [](void* /*block*/) { ADD_FAILURE() << "not the function of the start"; };
    zxqterm(&context);
    zxqterm(&context);
    zxqterm(nullptr);
    EXPECT_EQ(termHookCalls, 1);
    EXPECT_EQ(CountedDefaults::blocks, 0);
    EXPECT_EQ(context.encodingFlags, 0x202U);
    EXPECT_EQ(context.runtimePrivate, nullptr);
    EXPECT_EQ(context.controlTable, nullptr);
    EXPECT_EQ(test::readFile(folder / "trace"), "waiting");
    EXPECT_EQ(context.outputStream, stderr);
    EXPECT_EQ(context.savedOutputStream, nullptr);

    ASSERT_EQ(zxqinit(&context, &kTable), 0);
    context.printFunction = &printNothing;
    zxqterm(&context);
    EXPECT_EQ(context.printFunction, &std::fprintf);
}

TEST(ContextAccessors, ReadAndWriteTheirOwnWordAndRefuseNull) {
    const struct {
        std::uint32_t (*get)(const ZxqGlobal*);
        std::int32_t (*set)(ZxqGlobal*, std::uint32_t);
        std::uint32_t ZxqGlobal::*word;
    } rows[] = {{&zxqGetEncodingRules, &zxqSetEncodingRules, &ZxqGlobal::encodingRules},
                {&zxqGetEncodingFlags, &zxqSetEncodingFlags, &ZxqGlobal::encodingFlags},
                {&zxqGetDecodingFlags, &zxqSetDecodingFlags, &ZxqGlobal::decodingFlags},
                {&zxqGetSavedFlags, nullptr, &ZxqGlobal::savedFlags}};
    for (const auto& row : rows) {
        ZxqGlobal context{};
        context.*row.word = 10;
        EXPECT_EQ(row.get(&context), 10U);
        EXPECT_EQ(row.get(nullptr), 0xFFFFFFFFU);
        if (row.set != nullptr) {
            EXPECT_EQ(row.set(&context, 3), 0);
            EXPECT_EQ(context.*row.word, 3U);
            EXPECT_EQ(row.set(nullptr, 3), 6);
        }
    }
    EXPECT_EQ(kxSetMessageHook(nullptr, nullptr), 6);
}

}  // namespace
}  // namespace zxqtlv
