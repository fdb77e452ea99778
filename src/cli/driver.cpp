#include "cli/driver.h"

#include <utility>

#include "cli/failure.h"
#include "cli/file.h"
#include "cli/fix_outcome.h"
#include "cli/layouts.h"
#include "cli/loader.h"
#include "cli/options.h"
#include "runtime/flags.h"
#include "runtime/print.h"
#include "runtime/report.h"
#include "runtime/trap.h"

namespace zxqtlv {
namespace {

class DriverRun {
  public:
    explicit DriverRun(ZxqGlobal& context) : context_(context) {}
    // Only a failure on its way to an outer guard still finds the output file open.
    ~DriverRun() {
        if (outputOpen_) {
            dropTraceFile(context_);
        }
    }
    DriverRun(const DriverRun&) = delete;
    DriverRun& operator=(const DriverRun&) = delete;

    // The work proper; ends by a failure's unwind or with `status`.
    void execute(int count, char* const* arguments);
    void finish();
    void cleanUpAfter(std::int32_t code);

    std::int32_t status() const { return status_; }

  private:
    void list();
    void openOutput();
    void closeOutput();
    std::uint32_t load();
    void reportLoading(std::uint32_t code);

    ZxqGlobal& context_;
    CommandLine line_;
    File stream_;
    LoadedInput input_;
    bool outputOpen_ = false;
    std::int32_t status_ = 0;
};

void DriverRun::execute(int count, char* const* arguments) {
    parseCommandLine(context_, count - 1, arguments + 1, line_);
    switch (line_.next) {
        case NextStep::ShowUsage:
            printUsage(context_);
            break;
        case NextStep::Finish:
            break;
        case NextStep::List:
            list();
            break;
    }
    finish();
}

void DriverRun::list() {
    if (line_.inputName == nullptr) {
        fail(context_, kMissingInput);
    }
    openOutput();
    if ((context_.flags & FixEncoding) != 0) {
        status_ = fixAndReport(context_, line_.inputName, line_.fixedName);
        return;
    }
    if (const std::uint32_t code = load(); code != 0) {
        status_ = static_cast<std::int32_t>(code);
        reportLoading(code);
    }
    EncodedBuffer buffer = input_.buffer();
    printLayout(context_, line_.format, buffer);
}

void DriverRun::openOutput() {
    if (line_.outputName == nullptr) {
        return;
    }
    if (zxqOpenTraceFile(&context_, line_.outputName) != 0) {
        fail(context_, kCannotOpenOutput, line_.outputName);
    }
    outputOpen_ = true;
}

// A listing that did not reach its file is a failure of its own, told on the terminal.
void DriverRun::closeOutput() {
    if (!std::exchange(outputOpen_, false)) {
        return;
    }
    const bool closed = zxqCloseTraceFile(&context_) == 0;
    if (!closed) {
        dropTraceFile(context_);
    }
    if (!closed || printFailed(context_)) {
        kxReportError(&context_, kCannotWriteOutput,
                      reinterpret_cast<std::uintptr_t>(line_.outputName));
        if (status_ == 0) {
            status_ = kCannotWriteOutput;
        }
    }
}

std::uint32_t DriverRun::load() {
    stream_.reset(std::fopen(line_.inputName, line_.binary ? "rb" : "r"));
    if (!stream_) {
        return kCannotOpenInput;
    }
    return loadInput(context_, stream_.get(), line_.slice, 0, input_);
}

// Returns for a text with foreign characters only: what stands before them is listed.
void DriverRun::reportLoading(std::uint32_t code) {
    if (code != kNotHexadecimal || !input_.octets) {
        closeOutput();
    }
    if (code == kOutOfMemoryCode) {
        fail(context_, kInternalError1);
    }
    const bool named =
        code == kCannotOpenInput || code == kCannotReadInput || code == kNotHexadecimal;
    const std::int32_t number = code == kBadOffset  ? line_.slice.offset
                                : code == kBadCount ? line_.slice.count
                                                    : 0;
    kxReportError(&context_, code, named ? reinterpret_cast<std::uintptr_t>(line_.inputName) : 0,
                  number);
}

void DriverRun::finish() {
    zxqprint(&context_, "%s", "\n\n");
    input_.reset();
    closeOutput();
    stream_.reset();
}

void DriverRun::cleanUpAfter(std::int32_t code) {
    status_ = code;
    input_.reset();
    closeOutput();
    stream_.reset();
    if (code >= kInternalError1 && code <= kInternalError3) {
        zxqprint(&context_, "\n%s", internalErrorText(code));
    }
    zxqprint(&context_, "%s", "\n\n");
}

}  // namespace

std::int32_t runDriver(ZxqGlobal& context, int count, char* const* arguments) {
    TrapGuard guard(context, GuardKind::Driver);
    DriverRun run(context);
    const std::int32_t code = guard.run([&] { run.execute(count, arguments); });
    if (code != 0) {
        run.cleanUpAfter(code);
    }
    return run.status();
}

}  // namespace zxqtlv
