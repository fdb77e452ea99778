// The flag words of the runtime context.
//
// For: naming every bit of `ZxqGlobal::flags`, `encodingFlags` and `decodingFlags` that the code
// reads or sets, and putting a flags word back when a scope ends, by return or by unwinding.
// Not for: deciding what a bit does; that stands where the bit is read.
#pragma once

#include <cstdint>

namespace zxqtlv {

// Bits of `ZxqGlobal::flags`.
enum ContextFlag : std::uint32_t {
    SyntaxLayout = 0x2,                // the syntax layout is in force
    TextInput = 0x4,                   // the input file holds hexadecimal digits
    NoShort = 0x8,                     // long contents are printed whole
    NoAddition = 0x10,                 // no clarifying value behind INTEGER and REAL
    NoTitles = 0x20,                   // no column titles in the syntax layout
    TrapEnabled = 0x40,                // fatal codes unwind to the innermost guard
    QuietNonFatal = 0x80,              // misencodings do not reach the message hook
    InvalidContents = 0x100,           // the last contents text is a hexadecimal substitute
    FixEncoding = 0x800000,            // long-form lengths are repaired in place
    TraceFixes = 0x1000000,            // the repair prints what it walks
    PrematureEndNotFatal = 0x2000000,  // KX017E is reported and returns
};

// Bits of `ZxqGlobal::encodingFlags` and `decodingFlags`.
enum CodingFlag : std::uint32_t {
    PrintMessages = 0x2,  // runtime messages of this direction are printed
    NoTrapping = 0x200,   // no signal handlers are installed for this context
};

// Adds bits to a flags word and puts the whole word back when the scope ends.
//
//     ScopedFlags quiet(context.flags, QuietNonFatal);
class ScopedFlags {
  public:
    ScopedFlags(std::uint32_t& word, std::uint32_t added) : word_(word), saved_(word) {
        word_ |= added;
    }
    ~ScopedFlags() { word_ = saved_; }
    ScopedFlags(const ScopedFlags&) = delete;
    ScopedFlags& operator=(const ScopedFlags&) = delete;

  private:
    std::uint32_t& word_;
    const std::uint32_t saved_;
};

}  // namespace zxqtlv
