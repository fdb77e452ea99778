// Listing tests as data: an input, a command line, and all that must come out.
//
// A file holds one or more cases. A case is these lines, in any order but for the first:
//
//     case: What the case shows, as a rule
//     args: -noshort in          default: in
//     arg: a name with blanks    one more argument, as it stands; may be repeated
//     input: 30 03 02 01 05      the file "in"; 41*600 stands for 600 times 41; may be repeated
//     text: 30 03 02 01 05       a line of the file "in", as it stands; may be repeated
//     stdin: in                  a line on standard input
//     stdin-end: in              characters on standard input without a line feed behind them
//     status: 17                 default: 0
//     |                          a line of the output behind the banner, as it stands
//     output NAME                the lines that follow are those of the file NAME
//     octets NAME: 30 03         the octets of the file NAME
//     absent: NAME               no such file is there afterwards
//
// Lines that begin with # and empty lines count for nothing.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zxqtlv::test {

struct ListingCase {
    std::string title;
    int line = 0;  // where it starts in its file
    std::vector<std::string> arguments;
    std::optional<std::string> input;
    std::string standardInput;
    int status = 0;
    std::string output;
    std::map<std::string, std::string> files;
    std::vector<std::string> absent;
};

// Reads a file of cases; a line that cannot be read throws std::runtime_error with its number.
std::vector<ListingCase> readCases(const std::filesystem::path& path);

// The octets that hexadecimal pairs spell; "41*3" stands for 41 41 41.
std::string octetsFromHex(const std::string& text);

}  // namespace zxqtlv::test
