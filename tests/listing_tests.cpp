// Runs every case of the files in listings/ against the real program and compares every octet of
// the output, the exit status and the files written.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "support/case_file.h"
#include "support/process.h"

namespace zxqtlv::test {
namespace {

class ListingTest : public testing::Test {
  public:
    explicit ListingTest(ListingCase listing) : case_(std::move(listing)) {}

    void TestBody() override {
        const TemporaryFolder folder;
        if (case_.input) {
            writeFile(folder / "in", *case_.input);
        }
        RunOptions options;
        options.standardInput = case_.standardInput;
        const RunResult result = runProgram(folder, case_.arguments, options);
        EXPECT_EQ(result.status, case_.status);
        EXPECT_EQ(withoutBanner(result.output), case_.output);
        EXPECT_EQ(result.errors, "");
        for (const auto& [name, content] : case_.files) {
            EXPECT_TRUE(std::filesystem::is_regular_file(folder / name)) << name;
            EXPECT_EQ(readFile(folder / name), content) << "in the file " << name;
        }
        for (const std::string& name : case_.absent) {
            EXPECT_FALSE(std::filesystem::exists(folder / name)) << name;
        }
    }

  private:
    const ListingCase case_;
};

std::string identifier(const std::string& title) {
    std::string name = title;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

void registerFile(const std::filesystem::path& path) {
    for (const ListingCase& listing : readCases(path)) {
        testing::RegisterTest(identifier(path.stem().string()).c_str(),
                              identifier(listing.title).c_str(), nullptr, nullptr,
                              path.string().c_str(), listing.line,
                              [listing]() -> ListingTest* { return new ListingTest(listing); });
    }
}

}  // namespace
}  // namespace zxqtlv::test

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    std::vector<std::filesystem::path> paths;
    const std::filesystem::path root = std::filesystem::path(ZXQTLV_SOURCE_DIR) / "tests/listings";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        if (entry.path().extension() == ".case") {
            paths.push_back(entry.path());
        }
    }
    std::sort(paths.begin(), paths.end());
    try {
        for (const auto& path : paths) {
            zxqtlv::test::registerFile(path);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return RUN_ALL_TESTS();
}
