#include "support/case_file.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace zxqtlv::test {
namespace {

std::vector<std::string> words(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> found;
    for (std::string word; stream >> word;) {
        // An argument that a shell would need quotes for.
        found.push_back(word == "\"\"" ? "" : word);
    }
    return found;
}

class CaseReader {
  public:
    std::vector<ListingCase> read(const std::filesystem::path& path);

  private:
    bool take(const std::string& keyword);
    void readLine();
    void startCase();

    std::vector<ListingCase> cases_;
    std::string line_;
    std::string value_;  // behind the keyword and a blank
    int number_ = 0;
    std::string* lines_ = nullptr;  // where lines with a bar go
};

bool CaseReader::take(const std::string& keyword) {
    if (line_.rfind(keyword, 0) != 0) {
        return false;
    }
    const std::size_t start = keyword.size() + 1;
    value_ = line_.size() > start ? line_.substr(start) : "";
    return true;
}

void CaseReader::startCase() {
    cases_.emplace_back();
    cases_.back().title = value_;
    cases_.back().line = number_;
    cases_.back().arguments = {"in"};
    lines_ = &cases_.back().output;
}

void CaseReader::readLine() {
    if (line_.empty() || line_[0] == '#') {
        return;
    }
    if (take("case:")) {
        startCase();
        return;
    }
    if (cases_.empty()) {
        throw std::runtime_error("a line stands in front of the first case");
    }
    ListingCase& current = cases_.back();
    if (line_[0] == '|') {
        *lines_ += line_.substr(1) + "\n";
    } else if (take("args:")) {
        current.arguments = words(value_);
    } else if (take("arg:")) {
        current.arguments.push_back(value_);
    } else if (take("input:")) {
        current.input = current.input.value_or("") + octetsFromHex(value_);
    } else if (take("text:")) {
        current.input = current.input.value_or("") + value_ + "\n";
    } else if (take("stdin:")) {
        current.standardInput += value_ + "\n";
    } else if (take("stdin-end:")) {
        current.standardInput += value_;
    } else if (take("status:")) {
        current.status = std::stoi(value_);
    } else if (take("output")) {
        lines_ = &current.files[value_];
    } else if (take("octets")) {
        const std::size_t colon = value_.find(':');
        current.files[value_.substr(0, colon)] = octetsFromHex(value_.substr(colon + 1));
    } else if (take("absent:")) {
        current.absent.push_back(value_);
    } else {
        throw std::runtime_error("no such keyword: " + line_);
    }
}

std::vector<ListingCase> CaseReader::read(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    while (std::getline(stream, line_)) {
        ++number_;
        try {
            readLine();
        } catch (const std::exception& error) {
            throw std::runtime_error(path.string() + ":" + std::to_string(number_) + ": " +
                                     error.what());
        }
    }
    return cases_;
}

}  // namespace

std::vector<ListingCase> readCases(const std::filesystem::path& path) {
    return CaseReader().read(path);
}

std::string octetsFromHex(const std::string& text) {
    std::string octets;
    for (const std::string& word : words(text)) {
        const std::size_t star = word.find('*');
        const std::string digits = word.substr(0, star);
        if (digits.empty() || digits.size() % 2 != 0 ||
            digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
            throw std::runtime_error("no hexadecimal pairs: " + word);
        }
        std::string run;
        for (std::size_t i = 0; i < digits.size(); i += 2) {
            run += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
        }
        const int times = star == std::string::npos ? 1 : std::stoi(word.substr(star + 1));
        for (int i = 0; i < times; ++i) {
            octets += run;
        }
    }
    return octets;
}

}  // namespace zxqtlv::test
