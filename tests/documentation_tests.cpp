// Every command that the documentation shows is run, and its output compared with what is shown.
//
// A block that starts with "```console" holds commands behind "$ " and their output, without the
// banner, the empty lines at both ends, and blanks at the ends of lines. A line "[...]" stands for
// any number of lines. Commands of other programs are run where these are installed.

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "support/process.h"

namespace zxqtlv::test {
namespace {

const std::string kPrompt = "$ ";
const std::string kLeftOut = "[...]";

using Lines = std::vector<std::string>;

Lines splitLines(const std::string& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(line);
    }
    return lines;
}

Lines withoutEmptyEnds(Lines lines) {
    while (!lines.empty() && lines.front().empty()) {
        lines.erase(lines.begin());
    }
    while (!lines.empty() && lines.back().empty()) {
        lines.pop_back();
    }
    return lines;
}

struct Shown {
    std::vector<std::string> words;  // of the command
    int line = 0;
    Lines output;
};

std::vector<Shown> readShown(const std::filesystem::path& path) {
    std::vector<Shown> all;
    bool inBlock = false;
    int number = 0;
    for (const std::string& line : splitLines(readFile(path))) {
        ++number;
        if (line.rfind("```", 0) == 0) {
            inBlock = line == "```console";
        } else if (inBlock && line.rfind(kPrompt, 0) == 0) {
            std::istringstream command(line.substr(kPrompt.size()));
            const std::vector<std::string> words{std::istream_iterator<std::string>(command), {}};
            all.push_back({words, number, {}});
        } else if (inBlock && !all.empty()) {
            all.back().output.push_back(line);
        }
    }
    return all;
}

// Whether `lines` from `at` on match the shown ones from `row` on.
bool matches(const Lines& shown, std::size_t row, const Lines& lines, std::size_t at) {
    for (; row < shown.size(); ++row, ++at) {
        if (shown[row] == kLeftOut) {
            for (std::size_t next = at; next <= lines.size(); ++next) {
                if (matches(shown, row + 1, lines, next)) {
                    return true;
                }
            }
            return false;
        }
        if (at >= lines.size() || lines[at] != shown[row]) {
            return false;
        }
    }
    return at == lines.size();
}

// Empty for another program that is not installed.
std::string outputOfCommand(const TemporaryFolder& folder, const std::vector<std::string>& words) {
    if (words.front() == "zxqtlv") {
        return withoutBanner(runProgram(folder, {words.begin() + 1, words.end()}).output);
    }
    std::string command = "cd '" + folder.path().string() + "' && command -v " + words.front() +
                          " >/dev/null && exec 2>&1";
    for (const char* separator = " && "; const std::string& word : words) {
        command += separator + word;
        separator = " ";
    }
    return outputOf(command);
}

TEST(Documentation, ShowsWhatTheProgramPrints) {
    const std::filesystem::path root = ZXQTLV_SOURCE_DIR;
    std::vector<std::filesystem::path> pages{root / "README.md"};
    for (const auto& entry : std::filesystem::directory_iterator(root / "docs")) {
        if (entry.path().extension() == ".md") {
            pages.push_back(entry.path());
        }
    }
    int commands = 0;
    for (const std::filesystem::path& page : pages) {
        for (const Shown& shown : readShown(page)) {
            SCOPED_TRACE(page.string() + ":" + std::to_string(shown.line));
            const TemporaryFolder folder;
            std::filesystem::copy(root / "examples", folder / "examples");
            const std::string output = outputOfCommand(folder, shown.words);
            const bool ours = shown.words.front() == "zxqtlv";
            const Lines lines = withoutEmptyEnds(splitLines(output));
            EXPECT_TRUE((output.empty() && !ours) ||
                        matches(withoutEmptyEnds(shown.output), 0, lines, 0))
                << output;
            commands += ours ? 1 : 0;
        }
    }
    EXPECT_GE(commands, 40);
}

}  // namespace
}  // namespace zxqtlv::test
