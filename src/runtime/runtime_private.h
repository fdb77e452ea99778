// The private state block of a context.
//
// For: words that services keep between calls and that a host has no business with.
// Not for: anything that outlives `zxqterm`.
#pragma once

#include <array>
#include <cstdarg>
#include <cstdint>

#include "runtime/print_block.h"

namespace zxqtlv {

struct ZxqGlobal;
struct WorkHeader;

// The buffer that the hexadecimal layout is walking, for the report of a premature end.
struct CurrentBuffer {
    std::int32_t length;  // octets
    const std::uint8_t* start;
};

using VprintHook = int (*)(ZxqGlobal* context, const char* format, std::va_list arguments);
using TableTermHook = void (*)(ZxqGlobal* context);
using DumpFunction = void (*)(ZxqGlobal* context, const std::uint8_t* data, std::int32_t length);

struct RuntimePrivate {
    std::uint32_t lastError{};  // the last KX code raised
    VprintHook vprintHook{};    // takes precedence over every other way to print
    TableTermHook tableTermHook{};
    std::uint16_t tableFlags{};
    DumpFunction dumpFunction{};  // prints encodings while tracing is on
    std::uint32_t traceLevel{};
    std::int32_t initStatus{};           // left by the table's initialisation
    std::array<void*, 4> ownedBlocks{};  // from allocate; released by `zxqterm`
    void* scratchBlock{};                // held between runtime messages; owned
    std::uint32_t memoryBlockCount{};    // settings of the memory manager
    std::uint32_t memoryBlockSize{};
    std::uint32_t fixupCount{};            // repairs of the pass; after a repair run, of all
    std::int32_t stopPoint{};              // octets at the end that a repair does not walk
    bool automaticPadding{};               // 00 and FF between records count as padding
    const CurrentBuffer* currentBuffer{};  // null while no layout registers one
    WorkHeader* workBlocks{};              // memory of the work in progress, newest first
    bool writeFailed{};                    // some text did not reach its stream
    PrintBlock printBlock;                 // text on its way to `zxqprint`
};

}  // namespace zxqtlv
