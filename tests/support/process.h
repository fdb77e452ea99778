// Running the real program as a user would, in a folder of its own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zxqtlv::test {

// An empty folder that is gone when its owner is.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

  private:
    std::filesystem::path path_;
};

std::string readFile(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, const std::string& content);

struct RunOptions {
    std::string standardInput;
    std::string outputPath;       // standard output goes here; empty: it is captured
    bool closeOutput = false;     // standard output is closed
    std::size_t stackOctets = 0;  // limit of the stack; 0 for the machine's own
};

struct RunResult {
    int status = -1;  // exit status; 128 plus the signal that ended it
    std::string output;
    std::string errors;
    long peakKib = 0;  // largest resident set
};

// Runs the program with `folder` as its working folder.
RunResult runProgram(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                     const RunOptions& options = {});

// What a shell command prints on standard output; empty where it cannot be run.
std::string outputOf(const std::string& command);

// The three lines that every run starts with, this year's date in them.
std::string banner();

// What follows the banner; fails the test when the banner is not there.
std::string withoutBanner(const std::string& output);

}  // namespace zxqtlv::test
