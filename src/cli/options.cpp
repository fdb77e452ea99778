#include "cli/options.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "cli/failure.h"
#include "runtime/flags.h"
#include "runtime/print.h"

namespace zxqtlv {
namespace {

enum class Option : std::int16_t {
    None = 0,
    Hexadecimal = 1,
    Decomposed = 2,
    Syntax = 3,
    Binary = 4,
    Text = 5,
    NameFromStdin = 6,
    Output = 7,
    Slice = 8,
    NoShort = 9,
    NoAddition = 10,
    NoTitles = 11,
    Help = 12,
    FixEncoding = 14,
    NoTrace = 15,
    Pad = 16,
};

struct OptionRow {
    std::string_view name;
    Option option;
    std::size_t minimum;  // characters of the shortest abbreviation
};

// The order decides between options that share an abbreviation.
constexpr std::array<OptionRow, 15> kOptions{{
    {"-hexadecimal", Option::Hexadecimal, 2},
    {"-decomposed", Option::Decomposed, 2},
    {"-syntax", Option::Syntax, 2},
    {"-binary", Option::Binary, 2},
    {"-text", Option::Text, 2},
    {"-", Option::NameFromStdin, 1},
    {"-output", Option::Output, 2},
    {"+", Option::Slice, 1},
    {"-noshort", Option::NoShort, 4},
    {"-noaddition", Option::NoAddition, 4},
    {"-notitles", Option::NoTitles, 4},
    {"-help", Option::Help, 5},
    {"-zfixencoding", Option::FixEncoding, 3},
    {"-znotrace", Option::NoTrace, 3},
    {"-pad", Option::Pad, 2},
}};

constexpr char toLower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

bool matches(const OptionRow& row, std::string_view argument) {
    return argument.size() >= row.minimum && argument.size() <= row.name.size() &&
           std::equal(argument.begin(), argument.end(), row.name.begin(),
                      [](char given, char known) { return toLower(given) == known; });
}

Option findOption(std::string_view argument) {
    if (argument.starts_with('+')) {
        return Option::Slice;
    }
    const auto* const row = std::find_if(
        kOptions.begin(), kOptions.end(),
        [argument](const OptionRow& candidate) { return matches(candidate, argument); });
    return row != kOptions.end() ? row->option : Option::None;
}

class ArgumentReader {
  public:
    ArgumentReader(ZxqGlobal& context, int count, char* const* arguments, CommandLine& line)
        : context_(context), next_(arguments), end_(arguments + count), line_(line) {}

    void readAll();

  private:
    void act(Option option, const char* argument);
    void chooseFormat(TlvFormat format, const char* argument);
    void setInputName(const char* name);
    void takeInputName();
    void readInputNameFromStdin();
    const char* takeOutputName(const char* current);
    void takePadByte();
    void readSlice(const char* argument);
    std::int32_t readNumber(const char* text, char end, DriverStatus failure);
    // The next argument when there is one that does not begin with a dash, else null.
    const char* takeValue() { return next_ != end_ && (*next_)[0] != '-' ? *next_++ : nullptr; }

    ZxqGlobal& context_;
    char* const* next_;
    char* const* const end_;
    CommandLine& line_;
};

void ArgumentReader::readAll() {
    while (next_ != end_ && line_.next != NextStep::Finish) {
        line_.next = NextStep::List;
        const char* const argument = *next_++;
        if (argument[0] == '-' || argument[0] == '+') {
            act(findOption(argument), argument);
        } else {
            setInputName(argument);
        }
    }
}

void ArgumentReader::act(Option option, const char* argument) {
    switch (option) {
        case Option::Hexadecimal:
        case Option::Decomposed:
        case Option::Syntax:
            chooseFormat(static_cast<TlvFormat>(option), argument);
            break;
        case Option::Binary:
            takeInputName();
            break;
        case Option::Text:
            line_.binary = false;
            context_.flags |= TextInput;
            takeInputName();
            break;
        case Option::NameFromStdin:
            readInputNameFromStdin();
            break;
        case Option::Output:
            line_.outputName = takeOutputName(line_.outputName);
            break;
        case Option::Slice:
            readSlice(argument);
            break;
        case Option::NoShort:
            context_.flags |= NoShort;
            break;
        case Option::NoAddition:
            context_.flags |= NoAddition;
            break;
        case Option::NoTitles:
            context_.flags |= NoTitles;
            break;
        case Option::Help:
            printHelp(context_);
            line_.next = NextStep::Finish;
            break;
        case Option::FixEncoding:
            context_.flags |= FixEncoding;
            line_.fixedName = takeOutputName(line_.fixedName);
            break;
        case Option::NoTrace:
            context_.flags &= ~static_cast<std::uint32_t>(TraceFixes);
            break;
        case Option::Pad:
            takePadByte();
            break;
        case Option::None:
            fail(context_, kUnknownParameter, argument);
    }
}

// The first layout wins.
void ArgumentReader::chooseFormat(TlvFormat format, const char* argument) {
    if (line_.format != TlvFormat::None) {
        zxqprint(&context_, "Ignored extra TLV-format option: %s.\n", argument);
        return;
    }
    line_.format = format;
}

void ArgumentReader::setInputName(const char* name) {
    if (line_.inputName != nullptr) {
        fail(context_, kTooManyInputs);
    }
    line_.inputName = name;
}

void ArgumentReader::takeInputName() {
    if (line_.inputName != nullptr) {
        fail(context_, kTooManyInputs);
    }
    if (next_ == end_) {
        fail(context_, kMissingInputName);
    }
    const std::string_view name = *next_;
    if (name == "-") {
        ++next_;
        readInputNameFromStdin();
        return;
    }
    if (name.starts_with('-')) {
        fail(context_, kMissingInputName);
    }
    line_.inputName = *next_++;
}

void ArgumentReader::readInputNameFromStdin() {
    if (line_.inputName != nullptr) {
        fail(context_, kTooManyInputs);
    }
    auto& name = line_.nameFromStdin;
    if (std::fgets(name.data(), static_cast<int>(name.size()), stdin) == nullptr) {
        fail(context_, kCannotReadStdin);
    }
    const std::string_view read(name.data());
    if (read.ends_with('\n')) {
        name[read.size() - 1] = '\0';
    }
    line_.inputName = name.data();
}

const char* ArgumentReader::takeOutputName(const char* current) {
    if (current != nullptr) {
        fail(context_, kTooManyOutputs);
    }
    const char* const name = takeValue();
    if (name == nullptr) {
        fail(context_, kMissingOutputName);
    }
    return name;
}

void ArgumentReader::takePadByte() {
    const char* const text = takeValue();
    if (text == nullptr) {
        fail(context_, kMissingPadByte);
    }
    char* end = nullptr;
    const long value = std::strtol(text, &end, 0);
    if (*end != '\0' || value < 0 || value > 255) {
        fail(context_, kInvalidPadByte, text);
    }
    context_.padSetting = static_cast<std::uint32_t>(value) + 1;
}

// "+off" or "+off,num".
void ArgumentReader::readSlice(const char* argument) {
    const std::string_view text = argument;
    const std::size_t comma = text.find(',', 1);
    if (text.size() < 2) {
        fail(context_, kInvalidOffset, argument);
    }
    if (comma == text.size() - 1) {
        fail(context_, kInvalidCount, argument);
    }
    if (comma == 1) {
        fail(context_, kInvalidOffset, argument + 1);
    }
    const bool counted = comma != std::string_view::npos;
    line_.slice.offset = readNumber(argument + 1, counted ? ',' : '\0', kInvalidOffset);
    if (counted) {
        line_.slice.count = readNumber(argument + comma + 1, '\0', kInvalidCount);
    }
}

// Decimal digits up to `end`, in 32-bit arithmetic that wraps. A value with all bits set ends the
// number early; what follows it is not looked at.
std::int32_t ArgumentReader::readNumber(const char* text, char end, DriverStatus failure) {
    const char* const start = text;
    std::uint32_t value = 0;
    for (; *text != end && value != ~0U; ++text) {
        if (*text < '0' || *text > '9') {
            fail(context_, failure, start);
        }
        value = value * 10 + static_cast<std::uint32_t>(*text - '0');
    }
    return static_cast<std::int32_t>(value);
}

}  // namespace

void parseCommandLine(ZxqGlobal& context, int count, char* const* arguments, CommandLine& line) {
    context.padSetting = 0;
    context.flags |= TraceFixes;
    ArgumentReader(context, count, arguments, line).readAll();
}

}  // namespace zxqtlv
