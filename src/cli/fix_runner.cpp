#include "cli/fix_runner.h"

#include <cstdio>
#include <utility>

#include "cli/file.h"
#include "cli/loader.h"
#include "runtime/flags.h"
#include "runtime/print.h"
#include "runtime/report.h"
#include "runtime/runtime_private.h"
#include "runtime/trap.h"
#include "tlv/header.h"
#include "tlv/hexadecimal_layout.h"

namespace zxqtlv {
namespace {

// Zero octets behind the input, for a first triple that tells no length of its own.
constexpr std::int32_t kSpareOctets = 16;
constexpr std::int32_t kMostFixups = 999;  // with more, no further pass is made

int printNothing(ZxqGlobal* /*context*/, const char* /*format*/, ...) {
    return 0;
}

// Puts back a word when the scope ends.
template <typename Word>
class Restored {
  public:
    explicit Restored(Word& word) : word_(word), saved_(word) {}
    ~Restored() { word_ = saved_; }
    Restored(const Restored&) = delete;
    Restored& operator=(const Restored&) = delete;

  private:
    Word& word_;
    const Word saved_;
};

bool isInternal(std::int32_t code) {
    return code >= 1 && code <= 3;
}

class FixRun {
  public:
    FixRun(ZxqGlobal& context, TrapGuard& guard)
        : context_(context), state_(*context.runtimePrivate), guard_(guard) {}

    std::int32_t run(const char* inputName, const char* fixedName);
    std::int32_t total() const { return total_; }

  private:
    std::uint32_t load(const char* name);
    void measureFirstTriple();
    std::int32_t runPasses();
    void write(const char* name);
    std::int32_t lastError() const { return static_cast<std::int32_t>(state_.lastError); }

    ZxqGlobal& context_;
    RuntimePrivate& state_;
    TrapGuard& guard_;
    LoadedInput input_;
    EncodedBuffer buffer_{0, nullptr};
    std::int32_t total_ = 0;
};

std::uint32_t FixRun::load(const char* name) {
    const File stream(std::fopen(name, "rb"));
    if (!stream) {
        return kCannotOpenInput;
    }
    if (loadInput(context_, stream.get(), {}, kSpareOctets, input_) != 0) {
        return kCannotReadInput;
    }
    buffer_ = input_.buffer();
    return 0;
}

// A first triple that tells where it ends needs no spare octets. Otherwise the walk stops in front
// of them.
void FixRun::measureFirstTriple() {
    const OctetView first = buffer_.view();
    const TripleHeader header = readHeader(first, tagMask(context_));
    const std::int32_t octets = headerLength(context_, first, header);
    const std::int32_t length =
        octets == kUnreadable ? kUnreadable : lengthChecked(context_, first, header);
    if (length >= 1 || length == kUnreadable) {
        buffer_.length -= kSpareOctets;
    } else {
        state_.stopPoint = kSpareOctets;
    }
}

// Returns 0, or the internal failure that ended the passes. A pass that a fatal code cuts is
// followed by another one when it repaired something.
std::int32_t FixRun::runPasses() {
    const std::int32_t lengthBefore = buffer_.length;
    bool cut = false;
    while (total_ <= kMostFixups) {
        context_.flags |= FixEncoding;
        context_.flags &= ~static_cast<std::uint32_t>(QuietNonFatal);
        state_.lastError = 0;
        state_.fixupCount = 0;
        const std::int32_t code = guard_.run([this] {
            printBlock(context_).append("\nFIXING THE INPUT ENCODING\n");
            printHexadecimal(context_, buffer_);
        });
        if (isInternal(code)) {
            return code;
        }
        cut = code != 0;
        total_ += static_cast<std::int32_t>(state_.fixupCount);
        if (state_.fixupCount == 0) {
            break;
        }
    }
    if (cut) {
        buffer_.length = lengthBefore - state_.stopPoint;
    } else if (lengthBefore - buffer_.length < state_.stopPoint) {
        ++total_;
    }
    return 0;
}

void FixRun::write(const char* name) {
    std::FILE* const file = std::fopen(name, "wb");
    if (file == nullptr) {
        state_.lastError = kCannotOpenInput;
        return;
    }
    const auto size = static_cast<std::size_t>(buffer_.length);
    const bool written = std::fwrite(buffer_.octets, 1, size, file) == size;
    const bool closed = std::fclose(file) == 0;
    if (!written || !closed) {
        state_.lastError = kCannotWriteOutput;
    }
}

std::int32_t FixRun::run(const char* inputName, const char* fixedName) {
    if (inputName == nullptr || fixedName == nullptr) {
        return kPrematureEnd;
    }
    std::uint32_t loaded = 0;
    const std::int32_t failed = guard_.run([&] {
        loaded = load(inputName);
        if (loaded == 0) {
            measureFirstTriple();
        }
    });
    if (loaded != 0) {
        return static_cast<std::int32_t>(loaded);
    }
    if (failed != 0) {
        return failed;
    }
    if (const std::int32_t internal = runPasses(); internal != 0) {
        return internal;
    }
    if (total_ > 0) {
        write(fixedName);
    }
    return lastError();
}

}  // namespace

std::int32_t runFix(ZxqGlobal& context, const char* inputName, const char* fixedName) {
    RuntimePrivate& state = *context.runtimePrivate;
    TrapGuard guard(context, GuardKind::LibraryEntry);
    const Restored printHook(context.printHook);
    const Restored traceLevel(state.traceLevel);
    const Restored stopPoint(state.stopPoint);
    if ((context.flags & TraceFixes) == 0) {
        printBlock(context).handOver();
        context.printHook = &printNothing;
    }
    state.traceLevel = 0;
    state.lastError = 0;
    state.fixupCount = 0;
    state.stopPoint = 0;
    FixRun run(context, guard);
    const std::int32_t result = run.run(inputName, fixedName);
    printBlock(context).handOver();
    state.fixupCount = static_cast<std::uint32_t>(run.total());
    return result;
}

std::int32_t fixupCount(const ZxqGlobal& context) {
    return static_cast<std::int32_t>(context.runtimePrivate->fixupCount);
}

}  // namespace zxqtlv
