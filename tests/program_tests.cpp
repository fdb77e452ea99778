// The program where small data files do not tell: nesting and sizes, limits of the machine, and
// outputs that cannot be written.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "support/process.h"

namespace zxqtlv::test {
namespace {

std::string repeated(const std::string& octets, int times) {
    std::string text;
    text.reserve(octets.size() * static_cast<std::size_t>(times));
    for (int i = 0; i < times; ++i) {
        text += octets;
    }
    return text;
}

const std::string kIndefinite("\x30\x80", 2);
const std::string kEnd("\0\0", 2);
const std::string kCannotWrite = "Error writing to output file, stdout.\n";

// `levels` SEQUENCEs of definite length, each the only contents of the one before.
std::string nestedDefinite(int levels) {
    std::string reversed;
    for (int i = 0; i < levels; ++i) {
        std::size_t length = reversed.size();
        if (length < 0x80) {
            reversed += static_cast<char>(length);
        } else {
            char count = 0;
            for (; length != 0; length >>= 8) {
                reversed += static_cast<char>(length & 0xFF);
                ++count;
            }
            reversed += static_cast<char>(0x80 | count);
        }
        reversed += '\x30';
    }
    return {reversed.rbegin(), reversed.rend()};
}

struct DeepRow {
    const char* what;
    std::string input;
    std::vector<std::string> arguments;
    std::size_t stackOctets;
    const char* message;  // that the listing holds, or ""
    std::ptrdiff_t rows;  // that begin with digits or blanks, at least
};

TEST(Program, ListsDeepNestingOnASmallStack) {
    constexpr int kMillion = 1000000;
    constexpr int kLevels = 10000;
    constexpr std::size_t kSmall = 256 * 1024;
    constexpr std::size_t kSmaller = 128 * 1024;
    const char* const kNotFound = "expected EOC not found";
    const DeepRow rows[] = {
        {"closed",
         repeated(kIndefinite, kLevels) + repeated(kEnd, kLevels),
         {"in"},
         kSmaller,
         "",
         2 * kLevels},
        // Every level takes two octets off those inside it, so half of them can be shown.
        {"unclosed", repeated(kIndefinite, kLevels), {"in"}, kSmaller, kNotFound, kLevels / 2},
        {"one end missing",
         repeated(kIndefinite, kLevels) + repeated(kEnd, kLevels - 1),
         {"in"},
         kSmaller,
         kNotFound,
         kLevels},
        {"a million closed",
         repeated(kIndefinite, kMillion) + repeated(kEnd, kMillion),
         {"in", "-dec"},
         kSmall,
         "",
         2 * kMillion},
        {"a million unclosed",
         repeated(kIndefinite, kMillion),
         {"in", "-dec"},
         kSmall,
         kNotFound,
         kMillion / 2},
        {"a million definite", nestedDefinite(kMillion), {"in", "-dec"}, kSmall, "", kMillion},
        {"segments in segments",
         repeated("\x24\x80", kMillion / 10) + repeated(kEnd, kMillion / 10),
         {"in", "-dec"},
         kSmall,
         "",
         kMillion / 5},
    };
    for (const DeepRow& row : rows) {
        SCOPED_TRACE(row.what);
        const TemporaryFolder folder;
        writeFile(folder / "in", row.input);
        RunOptions options;
        options.stackOctets = row.stackOctets;
        const RunResult result = runProgram(folder, row.arguments, options);
        EXPECT_EQ(result.status, 0);
        EXPECT_NE(result.output.find(row.message), std::string::npos);
        EXPECT_GE(std::count(result.output.begin(), result.output.end(), '\n'), row.rows);
    }
}

TEST(Program, TellsThatStandardOutputCannotBeWritten) {
    const TemporaryFolder folder;
    writeFile(folder / "in", "\x02\x01\x05");
    RunOptions full;
    full.outputPath = "/dev/full";
    RunOptions closed;
    closed.closeOutput = true;
    for (const RunOptions& options : {full, closed}) {
        const RunResult result = runProgram(folder, {"in"}, options);
        EXPECT_EQ(result.status, 72);
        EXPECT_EQ(result.errors, kCannotWrite);
    }
    // What went wrong before stays the status.
    EXPECT_EQ(runProgram(folder, {"nowhere"}, full).status, 45);
}

TEST(Program, TellsThatTheOutputFileCannotBeWritten) {
    const TemporaryFolder folder;
    writeFile(folder / "in", repeated("\x02\x01\x05", 100000));
    const RunResult result = runProgram(folder, {"in", "-output", "/dev/full"});
    EXPECT_EQ(result.status, 72);
    EXPECT_EQ(withoutBanner(result.output), "Error writing to output file, /dev/full.\n\n");
    EXPECT_EQ(result.errors, "");
}

// A file opened in the place of a closed descriptor must not get what is meant for that one.
TEST(Program, KeepsFilesApartWhenStandardOutputIsClosed) {
    const TemporaryFolder folder;
    const std::string input = "\x04" + std::string("\0\x83", 2) + std::string(131, 'A');
    writeFile(folder / "in", input);
    ASSERT_EQ(runProgram(folder, {"in", "-output", "listing"}).status, 0);
    ASSERT_EQ(runProgram(folder, {"in", "-zfix", "fixed"}).status, 0);
    RunOptions options;
    options.closeOutput = true;
    EXPECT_EQ(runProgram(folder, {"in", "-output", "listing2"}, options).status, 72);
    EXPECT_EQ(readFile(folder / "listing2"), readFile(folder / "listing"));
    EXPECT_EQ(runProgram(folder, {"in", "-zfix", "fixed2"}, options).status, 72);
    EXPECT_EQ(readFile(folder / "fixed2"), readFile(folder / "fixed"));
    EXPECT_EQ(readFile(folder / "in"), input);
}

TEST(Program, RefusesInputsThatCannotBeReadWhole) {
    const TemporaryFolder folder;
    const auto expectFailure = [&](const std::string& name, int status, const std::string& text) {
        SCOPED_TRACE(name.substr(0, 80));
        const RunResult result = runProgram(folder, {name});
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(withoutBanner(result.output), text + "\n\n\n\n");
    };
    const std::string longName(5000, 'x');
    expectFailure(longName, 45, "Input file cannot be open, \n" + std::string(72, 'x') + ".");
    // A file that says it is longer than what can be read of it.
    const std::string liar = "/sys/kernel/mm/transparent_hugepage/enabled";
    if (std::filesystem::exists(liar)) {
        expectFailure(liar, 46, "Error reading from input file, \n" + liar + ".");
    }
    if (geteuid() != 0) {
        writeFile(folder / "secret", "\x05");
        std::filesystem::permissions(folder / "secret", std::filesystem::perms::none);
        expectFailure("secret", 45, "Input file cannot be open, secret.");
    }
}

TEST(Program, ReadsASliceOfAFileLargerThanTwoGigabytes) {
    const TemporaryFolder folder;
    writeFile(folder / "in", "");
    std::filesystem::resize_file(folder / "in", 3ULL << 30);  // takes no room: it is one hole
    std::fstream file(folder / "in", std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(2147483640);
    file.write("\x02\x01\x05", 3);
    file.close();
    const RunResult slice = runProgram(folder, {"in", "+2147483640,3"});
    EXPECT_EQ(slice.status, 0);
    EXPECT_EQ(withoutBanner(slice.output), "\n02 01 05\n\n\n");
    EXPECT_EQ(runProgram(folder, {"in"}).status, 46);
}

TEST(Program, TakesNoMoreMemoryForContentsThanTheirOwn) {
#ifdef ZXQTLV_SANITIZED
    GTEST_SKIP() << "sanitizers take memory of their own";
#endif
    constexpr long kMebibyte = 1024;  // in KiB
    constexpr int kSize = 64 << 20;
    const TemporaryFolder folder;
    writeFile(folder / "in", std::string("\x04\x84\x04\x00\x00\x00", 6) + std::string(kSize, 'A'));
    for (const char* const layout : {"-hex", "-dec", "-syn"}) {
        for (const char* const option : {"-noshort", "-notitles"}) {
            SCOPED_TRACE(std::string(layout) + option);
            const RunResult result =
                runProgram(folder, {"in", layout, option, "-output", "listing"});
            EXPECT_EQ(result.status, 0);
            EXPECT_LT(result.peakKib, (64 + 8) * kMebibyte);
        }
    }
}

TEST(Program, NeedsTheCLibraryAlone) {
#ifdef ZXQTLV_SANITIZED
    GTEST_SKIP() << "sanitizers bring libraries of their own";
#endif
    std::FILE* const pipe = popen("ldd '" ZXQTLV_PROGRAM "'", "r");
    ASSERT_NE(pipe, nullptr);
    std::array<char, 512> line{};
    int libraries = 0;
    while (std::fgets(line.data(), static_cast<int>(line.size()), pipe) != nullptr) {
        const std::string text(line.data());
        const bool known = text.find("linux-vdso") != std::string::npos ||
                           text.find("/ld-linux") != std::string::npos ||
                           text.find("libc.so") != std::string::npos ||
                           text.find("libm.so") != std::string::npos;
        EXPECT_TRUE(known) << text;
        ++libraries;
    }
    EXPECT_EQ(pclose(pipe), 0);
    EXPECT_GE(libraries, 2);
}

}  // namespace
}  // namespace zxqtlv::test
