// The head of the compiled type table that a context is initialised with.
//
// For: the words that `zxqinit` reads, and the way to the rows of the built-in types.
// Not for: the rows themselves; they belong to whoever makes the table.
#pragma once

#include <cstdint>

namespace zxqtlv {

struct BuiltInType;
struct ZxqGlobal;

inline constexpr std::uint16_t kControlTableVersion = 15;

struct ControlTable {
    void (*initialise)(ZxqGlobal* context);  // may be null; a status goes into initStatus
    const BuiltInType* builtInTypes;         // rows, or null for a table without types
    std::uint16_t version;                   // kControlTableVersion, or `zxqinit` refuses
    std::uint16_t flags;                     // copied into RuntimePrivate::tableFlags
};

}  // namespace zxqtlv
