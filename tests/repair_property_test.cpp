// Repairs of encodings that were damaged at random: lengths of the form 81 that were written as 00.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "support/process.h"

namespace zxqtlv::test {
namespace {

// A valid encoding, and where its first length octets of 81 stand.
struct Encoding {
    std::string octets;
    std::vector<std::size_t> longForms;
};

class Generator {
  public:
    // Numbers below the limit, the same ones on every machine.
    std::size_t below(std::size_t limit) { return random_() % limit; }

    Encoding records() {
        Encoding whole;
        for (std::size_t count = 1 + below(3); count > 0; --count) {
            append(whole, triple(below(4)));
        }
        return whole;
    }

  private:
    static void append(Encoding& whole, const Encoding& part) {
        for (const std::size_t place : part.longForms) {
            whole.longForms.push_back(whole.octets.size() + place);
        }
        whole.octets += part.octets;
    }

    Encoding triple(std::size_t levels);

    std::mt19937 random_{20260521};
};

Encoding Generator::triple(std::size_t levels) {
    Encoding contents;
    if (levels == 0) {
        const std::size_t count = below(4) == 0 ? below(128) : 128 + below(110);
        while (contents.octets.size() < count) {
            contents.octets += static_cast<char>(below(256));
        }
    } else {
        for (std::size_t count = 1 + below(4) / 2; count > 0; --count) {
            append(contents, triple(levels - 1));
        }
    }
    const std::string primitives("\x02\x03\x04\x0C\x80\x81", 6);
    const std::string constructed("\x30\x31\xA0\xA3\x61", 5);
    const std::string& tags = levels == 0 ? primitives : constructed;
    Encoding whole;
    whole.octets = tags[below(tags.size())];
    const std::size_t length = contents.octets.size();
    if (length > 255) {
        whole.octets += {'\x82', static_cast<char>(length / 256)};
    } else if (length > 127) {
        whole.longForms.push_back(1);
        whole.octets += '\x81';
    }
    whole.octets += static_cast<char>(length % 256);
    append(whole, contents);
    return whole;
}

bool begins(const std::string& text, const char* start) {
    return text.rfind(start, 0) == 0;
}

TEST(Repair, WhatItFixedIsListedWithoutAMessage) {
    Generator generator;
    int fixed = 0;
    int restored = 0;
    int valid = 0;
    int others = 0;
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const Encoding whole = generator.records();
        std::string damaged = whole.octets;
        for (const std::size_t place : whole.longForms) {
            damaged[place] = generator.below(2) == 0 ? '\0' : '\x81';
        }
        const TemporaryFolder folder;
        writeFile(folder / "in", damaged);
        const RunResult repair = runProgram(folder, {"-zfixencoding", "out", "-znotrace", "in"});
        const std::string outcome = withoutBanner(repair.output);
        const bool written = std::filesystem::exists(folder / "out");
        EXPECT_EQ(readFile(folder / "in"), damaged);
        if (damaged == whole.octets) {
            EXPECT_TRUE(begins(outcome, "\nEncoding is valid,")) << outcome;
        }
        if (begins(outcome, "\nRecords were fixed ")) {
            ++fixed;
            EXPECT_EQ(repair.status, 0);
            restored += readFile(folder / "out") == whole.octets ? 1 : 0;
            const RunResult listing = runProgram(folder, {"out"});
            EXPECT_EQ(listing.status, 0);
            EXPECT_EQ(listing.output.find("misencoded"), std::string::npos) << listing.output;
            EXPECT_EQ(listing.output.find('?'), std::string::npos) << listing.output;
        } else if (begins(outcome, "\nEncoding is valid,")) {
            ++valid;
            EXPECT_EQ(repair.status, 0);
            EXPECT_FALSE(written);
        } else {
            ++others;
            EXPECT_NE(repair.status, 0);
            EXPECT_EQ(written, begins(outcome, "\nEncoding is partially fixed ")) << outcome;
        }
    }
    RecordProperty("fixed", fixed);
    RecordProperty("restored", restored);
    std::printf("%d fixed, %d of them octet for octet; %d valid, %d others\n", fixed, restored,
                valid, others);
    EXPECT_GE(restored, 150);
    EXPECT_GE(valid, 50);
}

}  // namespace
}  // namespace zxqtlv::test
