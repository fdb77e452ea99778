#include "cli/fix_runner.h"

#include <cstdio>

#include "cli/file.h"
#include "cli/fix_passes.h"
#include "cli/loader.h"
#include "runtime/flags.h"
#include "runtime/print.h"
#include "runtime/report.h"
#include "runtime/runtime_private.h"
#include "runtime/trap.h"

namespace zxqtlv {
namespace {

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

// The input whole, with the spare octets; it is closed again when this returns.
std::uint32_t load(ZxqGlobal& context, const char* name, LoadedInput& input) {
    const File stream(std::fopen(name, "rb"));
    if (!stream) {
        return kCannotOpenInput;
    }
    return loadInput(context, stream.get(), {}, kSpareOctets, input) == 0
               ? 0
               : static_cast<std::uint32_t>(kCannotReadInput);
}

// Returns 0 or the code of what went wrong.
std::uint32_t write(const EncodedBuffer& buffer, const char* name) {
    std::FILE* const file = std::fopen(name, "wb");
    if (file == nullptr) {
        return kCannotOpenInput;
    }
    const auto size = static_cast<std::size_t>(buffer.length);
    const bool written = std::fwrite(buffer.octets, 1, size, file) == size;
    const bool closed = std::fclose(file) == 0;
    return written && closed ? 0 : static_cast<std::uint32_t>(kCannotWriteOutput);
}

struct FileResult {
    std::uint32_t code;
    std::int32_t fixups;
};

FileResult fixFile(ZxqGlobal& context, const char* inputName, const char* fixedName) {
    if (inputName == nullptr || fixedName == nullptr) {
        return {kPrematureEnd, 0};
    }
    TrapGuard guard(context, GuardKind::LibraryEntry);
    LoadedInput input;
    if (const std::uint32_t code = load(context, inputName, input); code != 0) {
        return {code, 0};
    }
    EncodedBuffer buffer = input.buffer();
    const FixResult fixed = repairEncoding(context, guard, buffer);
    if (fixed.failure != 0) {
        // Nothing is written then, so no repair is told of.
        return {static_cast<std::uint32_t>(fixed.failure), 0};
    }
    std::uint32_t code = context.runtimePrivate->lastError;
    if (fixed.fixups > 0) {
        if (const std::uint32_t failure = write(buffer, fixedName); failure != 0) {
            code = failure;
        }
    }
    return {code, fixed.fixups};
}

}  // namespace

std::int32_t runFix(ZxqGlobal& context, const char* inputName, const char* fixedName) {
    RuntimePrivate& state = *context.runtimePrivate;
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
    const FileResult result = fixFile(context, inputName, fixedName);
    printBlock(context).handOver();
    state.lastError = result.code;
    state.fixupCount = static_cast<std::uint32_t>(result.fixups);
    return static_cast<std::int32_t>(result.code);
}

std::int32_t fixupCount(const ZxqGlobal& context) {
    return static_cast<std::int32_t>(context.runtimePrivate->fixupCount);
}

}  // namespace zxqtlv
