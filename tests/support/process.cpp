#include "support/process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace zxqtlv::test {
namespace {

void redirect(const std::string& path, int flags, int descriptor) {
    const int file = open(path.c_str(), flags, 0600);
    if (file < 0 || dup2(file, descriptor) < 0) {
        _exit(126);
    }
    close(file);
}

[[noreturn]] void becomeProgram(const std::string& folder, std::vector<char*>& arguments,
                                const RunOptions& options, const std::string& streams) {
    redirect(streams + "/in", O_RDONLY, STDIN_FILENO);
    redirect(options.outputPath.empty() ? streams + "/out" : options.outputPath, O_WRONLY | O_CREAT,
             STDOUT_FILENO);
    redirect(streams + "/err", O_WRONLY | O_CREAT, STDERR_FILENO);
    if (options.closeOutput) {
        close(STDOUT_FILENO);
    }
    if (options.stackOctets != 0) {
        const rlimit limit{options.stackOctets, options.stackOctets};
        setrlimit(RLIMIT_STACK, &limit);
    }
    if (chdir(folder.c_str()) != 0) {
        _exit(126);
    }
    execv(ZXQTLV_PROGRAM, arguments.data());
    _exit(127);
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "zxqtlv.XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        std::abort();
    }
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string readFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void writeFile(const std::filesystem::path& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

RunResult runProgram(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                     const RunOptions& options) {
    const TemporaryFolder streams;
    writeFile(streams / "in", options.standardInput);
    std::vector<std::string> words = arguments;
    words.insert(words.begin(), "zxqtlv");
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        becomeProgram(folder.path().string(), pointers, options, streams.path().string());
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    RunResult result;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    result.output = readFile(streams / "out");
    result.errors = readFile(streams / "err");
    result.peakKib = usage.ru_maxrss;
    return result;
}

std::string banner() {
    const auto today = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
    const int year = static_cast<int>(std::chrono::year_month_day(today).year());
    return "zxqtlv - prints BER encodings as tag-length-value triples, Version 10.1\n"
           "Copyright (C) " +
           std::to_string(year) + " the zxqtlv developers\n\n";
}

std::string withoutBanner(const std::string& output) {
    const std::string expected = banner();
    EXPECT_EQ(output.substr(0, expected.size()), expected);
    return output.substr(std::min(expected.size(), output.size()));
}

std::string outputOf(const std::string& command) {
    std::string text;
    std::FILE* const pipe = popen(command.c_str(), "r");
    std::array<char, 4096> piece{};
    for (std::size_t size = 1; pipe != nullptr && size != 0;) {
        size = std::fread(piece.data(), 1, piece.size(), pipe);
        text.append(piece.data(), size);
    }
    if (pipe != nullptr) {
        pclose(pipe);
    }
    return text;
}

}  // namespace zxqtlv::test
