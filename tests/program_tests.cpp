// The program where small data files do not tell: nesting and sizes, limits of the machine, and
// outputs that cannot be written.

#include <gtest/gtest.h>

#include <string>

#include "support/process.h"

namespace zxqtlv::test {
namespace {

std::string repeated(const std::string& octets, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) {
        text += octets;
    }
    return text;
}

const std::string kIndefinite("\x30\x80", 2);
const std::string kEnd("\0\0", 2);

TEST(Program, ListsTenThousandLevelsOnASmallStack) {
    constexpr int kLevels = 10000;
    const TemporaryFolder folder;
    writeFile(folder / "in", repeated(kIndefinite, kLevels) + repeated(kEnd, kLevels));
    RunOptions options;
    options.stackOctets = 128 * 1024;
    const RunResult result = runProgram(folder, {"in"}, options);
    EXPECT_EQ(result.status, 0);
    // Each level but the innermost has a line and a closing line of two blanks a level and five
    // characters; the innermost is empty and closes itself in the same way.
    const long blanks = 2L * kLevels * (kLevels - 1);
    EXPECT_EQ(withoutBanner(result.output).size(),
              static_cast<std::size_t>(blanks + 12L * kLevels + 3));
}

}  // namespace
}  // namespace zxqtlv::test
