// Every certificate that the distribution trusts, listed by the program and by another tool: what
// both tell about a triple must agree.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/process.h"

namespace zxqtlv::test {
namespace {

const char* const kBundle = "/etc/ssl/certs/ca-certificates.crt";

std::string decodeBase64(const std::string& text) {
    static const std::string kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string octets;
    unsigned bits = 0;
    int count = 0;
    for (const char character : text) {
        const std::size_t value = kDigits.find(character);
        if (value == std::string::npos) {
            continue;
        }
        bits = bits << 6 | static_cast<unsigned>(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            octets += static_cast<char>(bits >> count & 0xFF);
        }
    }
    return octets;
}

std::vector<std::string> certificates() {
    const std::string kBegin = "-----BEGIN CERTIFICATE-----";
    const std::string text = readFile(kBundle);
    std::vector<std::string> found;
    for (std::size_t at = text.find(kBegin); at != std::string::npos; at = text.find(kBegin, at)) {
        at += kBegin.size();
        found.push_back(decodeBase64(text.substr(at, text.find("-----END", at) - at)));
    }
    return found;
}

// Names of object identifiers, as the other tool prints them, to dotted numbers.
std::map<std::string, std::string> identifierNames() {
    std::map<std::string, std::string> names;
    std::istringstream lines(outputOf("openssl list -objects"));
    for (std::string line; std::getline(lines, line);) {
        // "CN = commonName, 2.5.4.3", or one name for both: "rsaEncryption = 1.2.840..."
        const std::size_t equals = line.find(" = ");
        const std::size_t comma = line.rfind(", ");
        const std::size_t end = std::min(comma, line.size());
        if (equals == std::string::npos) {
            continue;
        }
        const std::string numbers =
            line.substr(comma == std::string::npos ? equals + 3 : comma + 2);
        names[line.substr(0, equals)] = numbers;
        names[line.substr(equals + 3, end - equals - 3)] = numbers;
    }
    return names;
}

struct Triple {
    long offset = 0;
    int depth = 0;  // from 1
    int header = 0;
    long length = 0;
    std::string form;
    std::string identifier;  // dotted; empty for other types

    bool operator==(const Triple&) const = default;
};

void PrintTo(const Triple& triple, std::ostream* out) {
    *out << triple.offset << " depth " << triple.depth << " header " << triple.header << " length "
         << triple.length << ' ' << triple.form << ' ' << triple.identifier;
}

std::vector<Triple> readListing(const std::string& listing, int topDepth,
                                const std::string& identifierName) {
    std::vector<Triple> triples;
    std::istringstream lines(listing);
    for (std::string line; std::getline(lines, line);) {
        Triple triple;
        std::array<char, 8> form{};
        if (std::sscanf(line.c_str(), "%ld:d=%d hl=%d l=%ld %4s:", &triple.offset, &triple.depth,
                        &triple.header, &triple.length, form.data()) != 5) {
            continue;
        }
        triple.depth += 1 - topDepth;
        triple.form = form.data();
        if (line.find("prim: " + identifierName) != std::string::npos) {
            triple.identifier = line.substr(line.rfind(':') + 1);
        }
        triples.push_back(triple);
    }
    return triples;
}

TEST(Certificates, AreReadAsAnotherToolReadsThem) {
    if (std::system("command -v openssl >/dev/null") != 0 || !std::filesystem::exists(kBundle)) {
        GTEST_SKIP() << "no openssl or no certificates here";
    }
    const std::map<std::string, std::string> names = identifierNames();
    int identifiers = 0;
    const std::vector<std::string> all = certificates();
    EXPECT_GT(all.size(), 50U);
    for (std::size_t i = 0; i < all.size(); ++i) {
        SCOPED_TRACE("certificate " + std::to_string(i));
        const TemporaryFolder folder;
        writeFile(folder / "in", all[i]);
        const RunResult result = runProgram(folder, {"in", "-dec"});
        std::vector<Triple> ours = readListing(result.output, 1, "OBJECT IDENTIFIER");
        std::vector<Triple> theirs = readListing(
            outputOf("openssl asn1parse -inform DER -in '" + (folder / "in").string() + "'"), 0,
            "OBJECT");
        for (Triple& triple : theirs) {
            if (const auto name = names.find(triple.identifier); name != names.end()) {
                triple.identifier = name->second;
            }
        }
        for (Triple& triple : ours) {
            std::replace(triple.identifier.begin(), triple.identifier.end(), ' ', '.');
            identifiers += triple.identifier.empty() ? 0 : 1;
        }
        ASSERT_EQ(ours.size(), theirs.size());
        for (std::size_t row = 0; row < ours.size(); ++row) {
            ASSERT_EQ(ours[row], theirs[row]);
        }
    }
    EXPECT_GT(identifiers, 1000);
}

}  // namespace
}  // namespace zxqtlv::test
