#include "tlv/syntax_line.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
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
// Characters of the type and the length with what is written past their columns, at most.
constexpr std::size_t kFieldsRoom = 96;

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

// A field that is wider than its column is followed by as many blanks as it is too wide.
char* fillColumn(char* start, char* end, std::size_t column) {
    const auto printed = static_cast<std::size_t>(end - start);
    const std::size_t blanks = printed > column ? printed - column : column - printed;
    std::memset(end, ' ', kTypeColumn);  // as many as it may be, for a fixed number costs less
    return end + blanks;
}

void printTitles(PrintBlock& out, const Line& line) {
    out.commit(
        writeText(out.startLine(indentation(line), kFieldsRoom), "Type         Length  Contents"));
}

char* writeApplicationTag(char* out, const TripleHeader& header) {
    char* end = writeText(out, "[APPLICATION ");
    // The low 32 bits, signed.
    end = writeDecimal(end, static_cast<std::int32_t>(header.tagNumber));
    *end++ = ']';
    return fillColumn(out, end, kTypeColumn);
}

// At most 12 characters of the name and what fills the column: the blanks behind a name.
char* writeName(char* out, const char* name) {
    std::memcpy(out, name, kTypeColumn);
    out[kLongestName] = ' ';
    return out + kTypeColumn;
}

// Writes to `end`, the room that a started line has. Returns where the line, which may be another
// one then, goes on.
char* printType(PrintBlock& out, char* end, const Line& line, std::string_view name) {
    if (line.header.tagClass == TagClass::Application) {
        return writeApplicationTag(end, line.header);
    }
    const std::size_t split = breakOf(line.header);
    if (split != 0) {
        std::memcpy(end, name.data(), kLongestName);
        out.commit(end + std::min(split, kLongestName));
        end = out.startLine(indentation(line), kFieldsRoom);
    }
    return writeName(end, name.data() + split);
}

char* writeLength(char* start, const Line& line, bool readable, bool exceeds) {
    char* end = start;
    if (!readable) {
        end = writeText(end, "???");
    } else if (line.header.isIndefinite()) {
        end = writeText(end, "indef");
    } else {
        *end = '?';
        end = writeDecimal(end + (exceeds ? 1 : 0), line.header.length);
    }
    return fillColumn(start, end, kLengthColumn);
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
        name = kUnknownName;
    }
    if ((context.flags & NoTitles) == 0 && line.titled) {
        printTitles(out, line);
    }
    const bool readable = checkHeader(context, line.triple, line.header);
    const bool exceeds = readable && line.header.exceeds(line.triple.remaining);
    char* const start = startRow(out, line, readable && !exceeds, kFieldsRoom);
    char* const behindType = printType(out, start, line, name);
    out.commit(writeLength(behindType, line, readable, exceeds));
    if (!readable) {
        return true;
    }
    if (isEmptyIndefinite(line.triple, line.header)) {
        out.commit(out.startLine(indentation(line), 0));
        out.append(kEndOfContentsName);
        return false;
    }
    return printContents(context, reader, line.triple, line.header, false) || exceeds;
}

}  // namespace zxqtlv
