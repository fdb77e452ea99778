// The runtime context of a run, and its beginning and end.
//
// For: `ZxqGlobal`, the record that every service takes first, the process-wide defaults that a
// new context copies, `zxqinit`, `zxqterm` and the one-line accessors.
// Not for: printing (runtime/print.h), messages (runtime/report.h) or guards (runtime/trap.h);
// they only keep their words here. One thread may use a context at a time.
//
//     ZxqGlobal context{};
//     if (zxqinit(&context, &table) == 0) {
//         zxqprint(&context, "%s\n", "ready");
//         zxqterm(&context);
//     }
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace zxqtlv {

struct ControlTable;
struct JumpBuffer;
struct RuntimePrivate;
struct ZxqGlobal;

using AllocateFunction = void* (*)(std::size_t octets);
using ReleaseFunction = void (*)(void* block);
using PrintFunction = int (*)(std::FILE* stream, const char* format, ...);
using PrintHook = int (*)(ZxqGlobal* context, const char* format, ...);
using MessageHook = std::uint32_t (*)(ZxqGlobal* context, std::uint32_t code,
                                      std::uintptr_t detail1, std::int32_t detail2);

inline constexpr std::uint32_t kLineWidthNotSet = 35;
inline constexpr std::size_t kMessageBufferSize = 512;

// Runtime return codes that the services of this folder give.
enum ReturnCode : std::int32_t {
    kSuccess = 0,
    kNullArgument = 6,
    kWrongTableVersion = 7,
    kOutOfMemory = 8,
    kNoControlTable = 20,
    kCannotOpenTraceFile = 27,
    kTraceFileAlreadyOpen = 28,
    kCannotCloseTraceFile = 46,
};

// A plain record; usable between a successful `zxqinit` and `zxqterm`, and not to be copied or
// moved between the two.
struct ZxqGlobal {
    AllocateFunction allocate;
    AllocateFunction resize;  // an empty slot
    ReleaseFunction release;
    std::uint32_t lineWidth;        // characters; kLineWidthNotSet counts as not set
    std::uint32_t allocationLimit;  // octets; 0 for no limit
    std::int32_t memoryTuning2;
    std::FILE* outputStream;  // null swallows all text
    PrintFunction printFunction;
    std::uint32_t userWord;  // survives re-initialisation
    const ControlTable* controlTable;
    std::uint32_t encodingRules;  // 0..10
    std::uint32_t encodingFlags;
    std::uint32_t decodingFlags;
    std::array<char, kMessageBufferSize> messageBuffer;  // the last runtime message
    std::uint32_t flags;
    std::uint32_t padSetting;  // the pad byte plus one; 0 for none
    MessageHook messageHook;
    JumpBuffer* jumpBuffer;        // the innermost active guard, or null
    std::uint32_t savedFlags;      // what `zxqterm` puts into encodingFlags
    std::FILE* savedOutputStream;  // the stream that a trace file replaced, or null
    PrintFunction savedPrintFunction;
    PrintHook printHook;
    AllocateFunction savedAllocate;
    ReleaseFunction savedRelease;
    RuntimePrivate* runtimePrivate;  // owned
};

// What `zxqinit` copies into a new context; null pointers and zero mean the C library's own.
struct ProcessDefaults {
    AllocateFunction allocate = nullptr;
    ReleaseFunction release = nullptr;
    PrintFunction printFunction = nullptr;
    std::FILE* outputStream = nullptr;
    std::uint32_t lineWidth = 0;
    std::uint32_t allocationLimit = 0;
    std::int32_t memoryTuning2 = 0;
    bool dropUserWord = false;  // re-initialisation clears userWord too
};

// The one instance of the process. Change it before `zxqinit`, from one thread.
ProcessDefaults& processDefaults();

// Fills the context from the table and the process defaults. Returns 0, kNullArgument,
// kOutOfMemory, kNoControlTable, kWrongTableVersion, or the status that the table's own
// initialisation left; on any of these the context holds no memory. Prints nothing.
std::int32_t zxqinit(ZxqGlobal* context, const ControlTable* table);

// Hands over waiting text, closes an open trace file and releases all that hangs on the context.
// Does nothing for a null context or one without a control table.
void zxqterm(ZxqGlobal* context);

// Stores the hook that prints KX messages; null removes it. Returns 0 or kNullArgument.
std::int32_t kxSetMessageHook(ZxqGlobal* context, MessageHook hook);

// The field, or all bits set for a null context.
std::uint32_t zxqGetEncodingRules(const ZxqGlobal* context);
std::uint32_t zxqGetEncodingFlags(const ZxqGlobal* context);
std::uint32_t zxqGetDecodingFlags(const ZxqGlobal* context);
std::uint32_t zxqGetSavedFlags(const ZxqGlobal* context);

// Store the field. Return 0 or kNullArgument.
std::int32_t zxqSetEncodingRules(ZxqGlobal* context, std::uint32_t rules);
std::int32_t zxqSetEncodingFlags(ZxqGlobal* context, std::uint32_t flags);
std::int32_t zxqSetDecodingFlags(ZxqGlobal* context, std::uint32_t flags);

}  // namespace zxqtlv
