// The table of the runtime's own numbered messages.
//
// For: text, return code and detail kind by entry number. The entry number is not the message
// number: one message number may have several entries.
// Not for: formatting a message; runtime/runtime_messages.h does.
#pragma once

#include <cstdint>

namespace zxqtlv {

inline constexpr std::uint32_t kRuntimeMessages = 309;

// How the detail behind the text is written: a long as "%ld", a double as "%f", a text as "'%s'".
// Any other kind writes nothing.
enum class DetailKind : std::uint32_t { None = 0, Long = 3, Size = 4, Double = 5, Text = 6 };

struct RuntimeMessage {
    const char* text;         // four digits, severity letter, colon, blank, sentence
    std::int32_t returnCode;  // of the call that fails with this message
    DetailKind detail;
};

// The entry; numbers past the table name its last row, the end mark.
const RuntimeMessage& runtimeMessage(std::uint32_t entry);

}  // namespace zxqtlv
