#include "tlv/decomposed_line.h"

#include <string_view>

#include "contents/tag_text.h"
#include "runtime/print.h"
#include "runtime/report.h"
#include "tlv/contents_field.h"

namespace zxqtlv {
namespace {

constexpr std::size_t kNameColumn = 18;  // characters of the name with a blank, at least

void printPosition(PrintBlock& out, const DecomposedLine& line) {
    out.appendPadded(line.offset, 3);
    out.append(":d=");
    out.appendPadded(static_cast<std::int64_t>(line.depth), 2);
}

// The header and its length octets cannot both be read.
void printUnreadable(PrintBlock& out, const DecomposedLine& line) {
    printPosition(out, line);
    out.append(" hl=");
    if (line.header.headerOctets != kUnreadable) {
        out.appendDecimal(line.header.headerOctets);
        out.append(" l=");
    }
    out.append(" ???");
}

void printLengths(PrintBlock& out, const DecomposedLine& line) {
    printPosition(out, line);
    out.append(" hl=");
    out.appendDecimal(line.header.headerOctets);
    if (line.header.isIndefinite()) {
        out.append(" l=-128");
    } else {
        out.append(" l=");
        out.appendPadded(line.header.clamped(line.triple.remaining), 4);
    }
    out.append(line.header.constructed ? " cons: " : " prim: ");
}

// Returns true when the contents are invalid: they are shown, and the triple is not entered.
bool printContents(ZxqGlobal& context, ContentsReader& reader, const DecomposedLine& line,
                   std::size_t nameLength) {
    PrintBlock& out = printBlock(context);
    if (nameLength + 1 < kNameColumn) {
        out.appendBlanks(kNameColumn - nameLength - 1);
    }
    const Contents contents = reader.read(line.triple, line.header);
    if (contents.present && (!line.header.constructed || contents.invalid)) {
        out.append(':');
        printContentsText(context, contents, line.header);
    }
    return contents.invalid;
}

void printClosingPair(ZxqGlobal& context, ContentsReader& reader, const DecomposedLine& line) {
    const OctetView pair{line.triple.position + line.header.headerOctets, 2};
    const TripleHeader header = readHeader(pair, tagMask(context));
    printDecomposedLine(context, reader,
                        {pair, header, line.depth, line.offset + line.header.headerOctets, true});
}

}  // namespace

bool printDecomposedLine(ZxqGlobal& context, ContentsReader& reader, const DecomposedLine& line) {
    TagText storage;
    std::string_view name = tagName(context, line.triple, line.header, storage);
    if (name.data() == nullptr) {
        return true;
    }
    const bool unknown = line.triple.position[0] == 0 && !line.closing;
    if (unknown) {
        kxReportError(&context, kTagOfZero);
        name = "Unknown";
    }
    const std::int32_t header = headerLength(context, line.triple, line.header);
    const bool readable = header != kUnreadable && header <= line.triple.remaining &&
                          lengthChecked(context, line.triple, line.header) != kUnreadable;
    PrintBlock& out = printBlock(context);
    if (!readable) {
        out.startRow();
        printUnreadable(out, line);
        return true;
    }
    out.append('\n');
    out.startRow();
    printLengths(out, line);
    out.append(name);
    if (line.header.isIndefinite() && line.triple.from(header).atEndOfContents()) {
        printClosingPair(context, reader, line);
        return false;
    }
    if (unknown || name == kEndOfContentsName) {
        return false;
    }
    return printContents(context, reader, line, name.size());
}

}  // namespace zxqtlv
