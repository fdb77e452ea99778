#include "tlv/syntax_line.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "contents/tag_text.h"
#include "runtime/flags.h"
#include "runtime/hex_text.h"
#include "runtime/print.h"
#include "runtime/report.h"
#include "tlv/contents_field.h"

namespace zxqtlv {
namespace {

constexpr std::size_t kLongestName = 12;  // characters of a name that are shown
constexpr std::size_t kTypeColumn = 13;   // characters
constexpr std::size_t kLengthColumn = 8;

std::size_t indentation(const Line& line) {
    return 2 * line.depth;
}

constexpr bool contains(std::string_view name, std::string_view word) {
    return name.find(word) != std::string_view::npos;
}

// Where a name breaks over two lines; 0 for one that does not. The first rule that applies wins.
constexpr std::size_t findBreak(std::string_view name) {
    if (contains(name, "String") && name != "BMPString" && name != "IA5String") {
        return name.find("String");
    }
    if (contains(name, "Time") && name != "UTCTime") {
        return name.find("Time");
    }
    if (name == "CHARACTER STRING") {
        return name.find("STRING");
    }
    for (const std::string_view word : {"IDENTIFIER", "Descriptor", "SEQUENCE OF"}) {
        if (contains(name, word)) {
            return name.find(word);
        }
    }
    return 0;
}

// Only names of universal types hold these words.
constexpr auto kBreaks = [] {
    std::array<std::uint8_t, kUniversalTagNames.size()> breaks{};
    for (std::size_t tag = 0; tag < breaks.size(); ++tag) {
        breaks[tag] = static_cast<std::uint8_t>(findBreak(kUniversalTagNames[tag]));
    }
    return breaks;
}();

std::size_t breakOf(const TripleHeader& header) {
    return header.tagClass == TagClass::Universal && !universalTagName(header.tagNumber).empty()
               ? kBreaks[static_cast<std::size_t>(header.tagNumber)]
               : 0;
}

// Blanks behind a field of `printed` characters. A field wider than its column still gets as many
// as it is too wide.
void fillColumn(PrintBlock& out, std::size_t column, std::size_t printed) {
    out.appendBlanks(printed > column ? printed - column : column - printed);
}

void printTitles(PrintBlock& out, const Line& line) {
    out.append('\n');
    out.appendBlanks(indentation(line));
    out.append("Type         Length  Contents");
}

void printApplicationTag(PrintBlock& out, const TripleHeader& header) {
    TagText text;
    static constexpr std::string_view kStart = "[APPLICATION ";
    char* end = std::copy(kStart.begin(), kStart.end(), text.data());
    // The low 32 bits, signed.
    end = writeDecimal(end, static_cast<std::int32_t>(header.tagNumber));
    *end++ = ']';
    const auto size = static_cast<std::size_t>(end - text.data());
    out.append(std::string_view(text.data(), size));
    fillColumn(out, kTypeColumn, size);
}

void printType(PrintBlock& out, const Line& line, std::string_view name) {
    if (line.header.tagClass == TagClass::Application) {
        printApplicationTag(out, line.header);
        return;
    }
    if (const std::size_t split = breakOf(line.header); split != 0) {
        out.append(name.substr(0, std::min(split, kLongestName)));
        out.append('\n');
        out.startRow();
        out.appendBlanks(indentation(line));
        name.remove_prefix(split);
    }
    name = name.substr(0, kLongestName);
    out.append(name);
    fillColumn(out, kTypeColumn, name.size());
}

void printLength(PrintBlock& out, const Line& line, bool readable, bool exceeds) {
    std::array<char, 24> text{'?'};
    char* end = text.data() + (exceeds ? 1 : 0);
    std::string_view shown;
    if (!readable) {
        shown = "???";
    } else if (line.header.isIndefinite()) {
        shown = "indef";
    } else {
        end = writeDecimal(end, line.header.length);
        shown = {text.data(), static_cast<std::size_t>(end - text.data())};
    }
    out.append(shown);
    fillColumn(out, kLengthColumn, shown.size());
}

// Returns true when the contents are invalid.
bool printContents(ZxqGlobal& context, ContentsReader& reader, const Line& line) {
    const Contents& contents = reader.read(line.triple, line.header);
    if (contents.present && (!line.header.constructed || contents.invalid)) {
        printContentsText(context, contents, line.header);
    }
    return contents.invalid;
}

}  // namespace

bool printSyntaxLine(ZxqGlobal& context, ContentsReader& reader, const Line& line) {
    TagText storage;
    std::string_view name = tagName(context, line.triple, line.header, storage);
    if (name.data() == nullptr) {
        return true;
    }
    PrintBlock& out = printBlock(context);
    if (line.triple.position[0] == 0) {
        kxReportError(&context, kTagOfZero);
        name = "Unknown";
    }
    if ((context.flags & NoTitles) == 0 && line.titled) {
        printTitles(out, line);
    }
    const std::int32_t header = headerLength(context, line.triple, line.header);
    const bool readable = header != kUnreadable && header <= line.triple.remaining &&
                          lengthChecked(context, line.triple, line.header) != kUnreadable;
    const bool exceeds = readable && line.header.exceeds(line.triple.remaining);
    if (readable && !exceeds) {
        out.append('\n');
    }
    out.startRow();
    out.appendBlanks(indentation(line));
    printType(out, line, name);
    printLength(out, line, readable, exceeds);
    if (!readable) {
        return true;
    }
    if (isEmptyIndefinite(line)) {
        out.append('\n');
        out.appendBlanks(indentation(line));
        out.append(kEndOfContentsName);
        return false;
    }
    return printContents(context, reader, line) || exceeds;
}

}  // namespace zxqtlv
