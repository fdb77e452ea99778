#include "runtime/print.h"

#include <fcntl.h>
#include <unistd.h>

#include <bit>

#include "runtime/argument_words.h"
#include "support/process.h"
#include "unit/fixture.h"

namespace zxqtlv {
namespace {

using test::readFile;
using test::TemporaryFolder;
using test::TestContext;

std::string printer;  // who printed last
ArgumentWords received;

int takeWords(const char* name, int result, std::va_list arguments) {
    for (std::uintptr_t& word : received) {
        word = va_arg(arguments, std::uintptr_t);
    }
    va_end(arguments);
    printer = name;
    return result;
}

int vprintHook(ZxqGlobal* /*context*/, const char* /*format*/, std::va_list /*arguments*/) {
    printer = "vprintHook";
    return 11;
}

int printHook(ZxqGlobal* /*context*/, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    return takeWords("printHook", -12, arguments);
}

int printFunction(std::FILE* /*stream*/, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    return takeWords("printFunction", 13, arguments);
}

// A context that prints to a file of its own.
struct FileContext : TestContext {
    FileContext() : file(std::fopen((folder / "out").c_str(), "w")) {
        global.runtimePrivate->vprintHook = nullptr;
        global.outputStream = file;
    }
    ~FileContext() { std::fclose(file); }

    const TemporaryFolder folder;
    std::FILE* const file;
};

TEST(Print, GoesToTheFirstThatIsSet) {
    const struct {
        bool table, vprint, hook, stream;
        PrintFunction function;
        const char* printer;
        std::int32_t result;
    } rows[] = {
        {true, true, true, true, &printFunction, "vprintHook", 11},
        {true, false, true, true, &printFunction, "printHook", -12},
        {true, false, true, false, &printFunction, "printHook", -12},
        {true, false, false, true, &printFunction, "printFunction", 13},
        {false, true, true, true, &printFunction, "printFunction", 13},
        {true, false, false, false, &printFunction, "", 0},
        {true, false, false, true, &std::fprintf, "stream", 6},
        {true, false, false, true, nullptr, "stream", 6},
        {false, true, true, true, &std::fprintf, "stream", 6},
        {true, false, false, false, &std::fprintf, "", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        FileContext context;
        ZxqGlobal& global = context.global;
        const ControlTable* const table = global.controlTable;
        global.controlTable = row.table ? table : nullptr;
        global.runtimePrivate->vprintHook = row.vprint ? &vprintHook : nullptr;
        global.printHook = row.hook ? &printHook : nullptr;
        global.printFunction = row.function;
        global.outputStream = row.stream ? context.file : nullptr;
        printer.clear();
        EXPECT_EQ(zxqprint(&global, "%s", "stream"), row.result);
        // Read through the path: what is not flushed does not count.
        EXPECT_EQ(printer + readFile(context.folder / "out"), row.printer);
        global.controlTable = table;
    }
}

TEST(Print, WithoutAContextReachesStandardOutputAtOnce) {
    const TemporaryFolder folder;
    std::fflush(stdout);
    const int saved = dup(STDOUT_FILENO);
    const int file = open((folder / "out").c_str(), O_WRONLY | O_CREAT, 0600);
    dup2(file, STDOUT_FILENO);
    const std::int32_t result = zxqprint(nullptr, "%d%%", 42);
    const std::string printed = readFile(folder / "out");
    dup2(saved, STDOUT_FILENO);
    close(file);
    close(saved);
    EXPECT_EQ(result, 3);
    EXPECT_EQ(printed, "42%");
}

TEST(Print, PassesEightArgumentWordsToHooks) {
    FileContext context;
    ZxqGlobal* const global = &context.global;
    const auto bits = std::bit_cast<std::uint64_t>(-2.7);
    const std::uintptr_t low = bits & 0xFFFFFFFFU;
    const std::uintptr_t high = bits >> 32;
    const char* const text = "text";
    const auto address = reinterpret_cast<std::uintptr_t>(text);
    global->printFunction = &printFunction;
    for (const PrintHook hook : {static_cast<PrintHook>(nullptr), &printHook}) {
        global->printHook = hook;
        zxqprint(global, "%d %f %s %ld %c %u %x %d", 1, -2.7, text, 1L << 40, 'c', 6U, 7U, 8);
        EXPECT_EQ(received, (ArgumentWords{1, low, high, address, 1UL << 40, 'c', 6, 7}));
        zxqprint(global, "%d%d%d%d%d%d%d%+08.3f", 1, 2, 3, 4, 5, 6, 7, -2.7);
        EXPECT_EQ(received, (ArgumentWords{1, 2, 3, 4, 5, 6, 7, low}));
        zxqprint(global, "%%%*d %.*s %zu %g %e", 5, 42, 3, text, sizeof(int), -2.7, -2.7);
        EXPECT_EQ(received, (ArgumentWords{5, 42, 3, address, 4, low, high, low}));
        zxqprint(global, "100%% of %s", text);
        EXPECT_EQ(received, (ArgumentWords{address}));
    }
}

TEST(PrintBlock, CarriesAnyLengthAndCountsTheColumnAcross) {
    constexpr std::size_t capacity = PrintBlock::kCapacity;
    for (const std::size_t length : {std::size_t{255}, capacity - 1, capacity, 3 * capacity + 7}) {
        SCOPED_TRACE(length);
        TestContext context;
        PrintBlock& out = printBlock(context.global);
        std::string text;
        std::string pairs;
        for (std::size_t i = 0; i < length; ++i) {
            text += static_cast<char>('a' + i % 23);
            pairs += kUpperHexDigits[text[i] >> 4];
            pairs += kUpperHexDigits[text[i] & 15];
        }
        out.append("before");
        out.startRow();
        out.append(text);
        EXPECT_EQ(out.column(), length);
        out.appendBlanks(length);
        out.appendHex(reinterpret_cast<const std::uint8_t*>(text.data()), length);
        out.append('.');
        EXPECT_EQ(context.takeText(), "before" + text + std::string(length, ' ') + pairs + ".");
        EXPECT_EQ(out.column(), 4 * length + 1);
        out.startRow();
        out.appendDecimal(INT64_MIN);
        out.appendLowerHex(0xFFFFFABC);
        EXPECT_EQ(out.column(), 28U);
        EXPECT_EQ(context.takeText(), "-9223372036854775808fffffabc");
    }
}

TEST(TraceFile, TakesTheOutputInOrderUntilItIsClosed) {
    FileContext context;
    ZxqGlobal* const global = &context.global;
    const TemporaryFolder& folder = context.folder;
    EXPECT_EQ(zxqOpenTraceFile(nullptr, "x"), 6);
    EXPECT_EQ(zxqCloseTraceFile(nullptr), 6);
    EXPECT_EQ(zxqCloseTraceFile(global), 0);
    EXPECT_EQ(zxqOpenTraceFile(global, (folder / "missing/trace").c_str()), 27);
    EXPECT_EQ(global->outputStream, context.file);
    EXPECT_EQ(global->savedOutputStream, nullptr);
    printBlock(*global).append("1 %s%n ");
    zxqprint(global, "2 ");
    printBlock(*global).append("3 ");
    EXPECT_EQ(zxqOpenTraceFile(global, (folder / "trace").c_str()), 0);
    printBlock(*global).append("4 ");
    EXPECT_EQ(zxqOpenTraceFile(global, (folder / "other").c_str()), 28);
    zxqprint(global, "5 ");
    printBlock(*global).append("6");
    EXPECT_EQ(zxqCloseTraceFile(global), 0);
    zxqprint(global, "7");
    EXPECT_EQ(readFile(folder / "out"), "1 %s%n 2 3 7");
    EXPECT_EQ(readFile(folder / "trace"), "4 5 6");
    EXPECT_FALSE(std::filesystem::exists(folder / "other"));
    EXPECT_FALSE(printFailed(*global));
}

TEST(TraceFile, ThatCannotBeWrittenStaysUntilItIsDropped) {
    FileContext context;
    ZxqGlobal& global = context.global;
    ASSERT_EQ(zxqOpenTraceFile(&global, "/dev/full"), 0);
    std::FILE* const trace = global.outputStream;
    zxqprint(&global, "lost");
    EXPECT_TRUE(printFailed(global));
    // A print function of the host need not flush; the end of the file then does.
    std::fputs("unflushed", trace);
    EXPECT_EQ(zxqCloseTraceFile(&global), 46);
    EXPECT_EQ(global.outputStream, trace);
    EXPECT_EQ(global.savedOutputStream, context.file);
    zxqprint(&global, "lost too");
    dropTraceFile(global);
    EXPECT_EQ(global.savedOutputStream, nullptr);
    zxqprint(&global, "kept");
    EXPECT_EQ(readFile(context.folder / "out"), "kept");
}

}  // namespace
}  // namespace zxqtlv
