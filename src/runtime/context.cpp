#include "runtime/context.h"

#include <cstdlib>
#include <new>

#include "runtime/control_table.h"
#include "runtime/flags.h"
#include "runtime/memory.h"
#include "runtime/print.h"
#include "runtime/runtime_private.h"

namespace zxqtlv {
namespace {

constexpr std::uint32_t kMemoryBlockCount = 10;
constexpr std::uint32_t kMemoryBlockSize = 64;  // octets

// Zero everywhere but in userWord, and the process defaults copied in.
void resetContext(ZxqGlobal& context) {
    ProcessDefaults& defaults = processDefaults();
    if (defaults.lineWidth == 0) {
        defaults.lineWidth = kLineWidthNotSet;
    }
    const std::uint32_t userWord = defaults.dropUserWord ? 0 : context.userWord;
    context = ZxqGlobal{};
    context.userWord = userWord;
    context.encodingFlags = NoTrapping;
    context.decodingFlags = NoTrapping;
    context.allocate = defaults.allocate != nullptr ? defaults.allocate : &std::malloc;
    context.release = defaults.release != nullptr ? defaults.release : &std::free;
    context.printFunction =
        defaults.printFunction != nullptr ? defaults.printFunction : &std::fprintf;
    context.outputStream = defaults.outputStream != nullptr ? defaults.outputStream : stdout;
    context.lineWidth = defaults.lineWidth;
    context.allocationLimit = defaults.allocationLimit;
    context.memoryTuning2 = defaults.memoryTuning2;
    context.savedPrintFunction = context.printFunction;
    context.savedAllocate = context.allocate;
    context.savedRelease = context.release;
}

void releasePrivate(ZxqGlobal& context) {
    RuntimePrivate& state = *context.runtimePrivate;
    releaseWorkSince(context, nullptr);
    for (void* const block : state.ownedBlocks) {
        if (block != nullptr) {
            context.savedRelease(block);
        }
    }
    if (state.scratchBlock != nullptr) {
        context.savedRelease(state.scratchBlock);
    }
    context.savedRelease(context.runtimePrivate);
    context.runtimePrivate = nullptr;
    context.controlTable = nullptr;
}

}  // namespace

ProcessDefaults& processDefaults() {
    static ProcessDefaults defaults;
    return defaults;
}

std::int32_t zxqinit(ZxqGlobal* context, const ControlTable* table) {
    if (context == nullptr) {
        return kNullArgument;
    }
    resetContext(*context);
    void* const memory = context->allocate(sizeof(RuntimePrivate));
    if (memory == nullptr) {
        return kOutOfMemory;
    }
    context->runtimePrivate = new (memory) RuntimePrivate;  // not {}, which would clear the text
    context->runtimePrivate->printBlock.bind(context);
    if (table == nullptr || table->version != kControlTableVersion) {
        releasePrivate(*context);
        return table == nullptr ? kNoControlTable : kWrongTableVersion;
    }
    context->controlTable = table;
    RuntimePrivate& state = *context->runtimePrivate;
    if (table->initialise != nullptr) {
        table->initialise(context);
    }
    if (const std::int32_t status = state.initStatus; status != 0) {
        if (state.tableTermHook != nullptr) {
            state.tableTermHook(context);
        }
        releasePrivate(*context);
        return status;
    }
    state.tableFlags = table->flags;
    state.memoryBlockCount = kMemoryBlockCount;
    state.memoryBlockSize = kMemoryBlockSize;
    return kSuccess;
}

void zxqterm(ZxqGlobal* context) {
    if (context == nullptr || context->controlTable == nullptr) {
        return;
    }
    printBlock(*context).handOver();
    dropTraceFile(*context);
    context->printFunction = context->savedPrintFunction;
    if (context->runtimePrivate->tableTermHook != nullptr) {
        context->runtimePrivate->tableTermHook(context);
    }
    context->encodingFlags = context->savedFlags;
    releasePrivate(*context);
}

std::int32_t kxSetMessageHook(ZxqGlobal* context, MessageHook hook) {
    if (context == nullptr) {
        return kNullArgument;
    }
    context->messageHook = hook;
    return kSuccess;
}

std::uint32_t zxqGetEncodingRules(const ZxqGlobal* context) {
    return context == nullptr ? ~0U : context->encodingRules;
}

std::uint32_t zxqGetEncodingFlags(const ZxqGlobal* context) {
    return context == nullptr ? ~0U : context->encodingFlags;
}

std::uint32_t zxqGetDecodingFlags(const ZxqGlobal* context) {
    return context == nullptr ? ~0U : context->decodingFlags;
}

std::uint32_t zxqGetSavedFlags(const ZxqGlobal* context) {
    return context == nullptr ? ~0U : context->savedFlags;
}

std::int32_t zxqSetEncodingRules(ZxqGlobal* context, std::uint32_t rules) {
    if (context == nullptr) {
        return kNullArgument;
    }
    context->encodingRules = rules;
    return kSuccess;
}

std::int32_t zxqSetEncodingFlags(ZxqGlobal* context, std::uint32_t flags) {
    if (context == nullptr) {
        return kNullArgument;
    }
    context->encodingFlags = flags;
    return kSuccess;
}

std::int32_t zxqSetDecodingFlags(ZxqGlobal* context, std::uint32_t flags) {
    if (context == nullptr) {
        return kNullArgument;
    }
    context->decodingFlags = flags;
    return kSuccess;
}

}  // namespace zxqtlv
