#include "runtime/memory.h"

#include <new>

#include "runtime/runtime_private.h"

namespace zxqtlv {

void* contextAllocate(ZxqGlobal& context, std::size_t octets) {
    if (context.allocationLimit != 0 && octets > context.allocationLimit) {
        return nullptr;
    }
    return context.allocate(octets);
}

void contextRelease(ZxqGlobal& context, void* block) {
    if (block != nullptr) {
        context.release(block);
    }
}

void* workAllocate(ZxqGlobal& context, std::size_t octets) {
    void* const memory = contextAllocate(context, sizeof(WorkHeader) + octets);
    if (memory == nullptr) {
        return nullptr;
    }
    WorkHeader*& newest = context.runtimePrivate->workBlocks;
    auto* const header = new (memory) WorkHeader{nullptr, newest};
    if (newest != nullptr) {
        newest->newer = header;
    }
    newest = header;
    return header + 1;
}

void workRelease(ZxqGlobal& context, void* block) {
    if (block == nullptr) {
        return;
    }
    WorkHeader* const header = static_cast<WorkHeader*>(block) - 1;
    if (header->newer != nullptr) {
        header->newer->older = header->older;
    } else {
        context.runtimePrivate->workBlocks = header->older;
    }
    if (header->older != nullptr) {
        header->older->newer = header->newer;
    }
    contextRelease(context, header);
}

WorkHeader* newestWork(const ZxqGlobal& context) {
    return context.runtimePrivate->workBlocks;
}

void releaseWorkSince(ZxqGlobal& context, const WorkHeader* mark) {
    while (newestWork(context) != nullptr && newestWork(context) != mark) {
        workRelease(context, newestWork(context) + 1);
    }
}

}  // namespace zxqtlv
