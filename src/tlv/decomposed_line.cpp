#include "tlv/decomposed_line.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "contents/tag_text.h"
#include "runtime/hex_text.h"
#include "runtime/print.h"
#include "runtime/report.h"
#include "tlv/contents_field.h"

namespace zxqtlv {
namespace {

constexpr std::size_t kNameField = 17;  // characters, at least
// Characters of all fields of a line but its contents, at most.
constexpr std::size_t kFieldsRoom = 160;

char* writePosition(char* out, const DecomposedLine& line) {
    out = writePadded<3>(out, line.offset);
    out = writeText(out, ":d=");
    return writePadded<2>(out, static_cast<std::int64_t>(line.depth));
}

// The header and its length octets cannot both be read.
void printUnreadable(PrintBlock& out, const DecomposedLine& line) {
    char* end = writePosition(out.reserve(kFieldsRoom), line);
    end = writeText(end, " hl=");
    if (line.header.headerOctets != kUnreadable) {
        end = writeDecimal(end, line.header.headerOctets);
        end = writeText(end, " l=");
    }
    out.commit(writeText(end, " ???"));
}

void printFields(PrintBlock& out, const DecomposedLine& line, std::string_view name, bool filled) {
    char* end = writePosition(out.startLine(kFieldsRoom), line);
    end = writeText(end, " hl=");
    end = writePadded<1>(end, line.header.headerOctets);
    if (line.header.isIndefinite()) {
        end = writeText(end, " l=-128");
    } else {
        end = writeText(end, " l=");
        end = writePadded<4>(end, line.header.clamped(line.triple.remaining));
    }
    end = line.header.constructed ? writeText(end, " cons: ") : writeText(end, " prim: ");
    std::memcpy(end, name.data(), kTagField);
    out.commit(end + (filled ? std::max(name.size(), kNameField) : name.size()));
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
        name = kUnknownName;
    }
    const bool readable = checkHeader(context, line.triple, line.header);
    PrintBlock& out = printBlock(context);
    if (!readable) {
        out.startRow();
        printUnreadable(out, line);
        return true;
    }
    const bool empty = isEmptyIndefinite(line.triple, line.header);
    const bool hasContents = !empty && !unknown && name != kEndOfContentsName;
    printFields(out, line, name, hasContents);
    if (empty) {
        printClosingPair(context, reader, line);
    }
    return hasContents && printContents(context, reader, line.triple, line.header, true);
}

}  // namespace zxqtlv
