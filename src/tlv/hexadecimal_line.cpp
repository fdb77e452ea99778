#include "tlv/hexadecimal_line.h"

#include <algorithm>
#include <string_view>

#include "runtime/flags.h"
#include "runtime/print.h"
#include "runtime/report.h"
#include "tlv/hex_pairs.h"
#include "tlv/shortening.h"

namespace zxqtlv {
namespace {

constexpr std::int64_t kLineRoom = 75;  // characters, the "..." and a blank not counted

std::size_t indentation(const Line& line) {
    return 2 * line.depth;
}

// The rest of the level when not even the identifier can be read.
void printUnreadableRest(ZxqGlobal& context, const Line& line) {
    PrintBlock& out = printBlock(context);
    out.append('\n');
    printHexPairs(out, line.triple, indentation(line), "");
    reportPrematureEnd(context, line.triple);
}

// Raises what is wrong with the header. Returns whether the line is faulty.
bool reportFaults(ZxqGlobal& context, const Line& line) {
    if (line.header.has(HeaderTooLong)) {
        reportHeaderTooLong(context, line.triple, line.header);
    }
    if (line.header.length == kUnreadable) {
        reportPrematureEnd(context, line.triple);
        return true;
    }
    if (line.header.exceeds(line.triple.remaining)) {
        reportLengthTooLong(context, line.triple, line.header);
        return true;
    }
    return false;
}

void printIdentifier(PrintBlock& out, const Line& line, bool questioned) {
    static constexpr std::string_view kTrailers[2][2] = {{" ", " ?"}, {" 80", " ?80"}};
    printHexPairs(out, {line.triple.position, line.header.identifierOctets}, indentation(line),
                  kTrailers[line.header.isIndefinite() ? 1 : 0][questioned ? 1 : 0]);
}

// Definite lengths only; as many length octets as there are.
void printLength(PrintBlock& out, const Line& line) {
    const TripleHeader& header = line.header;
    OctetView octets = line.triple.from(header.identifierOctets);
    octets.remaining = std::min(octets.remaining, header.headerOctets - header.identifierOctets);
    if (line.fixed) {
        out.append("00");
        octets = octets.from(1);
    }
    printHexPairs(out, octets, 0, "");
    if (header.longForm) {
        out.append('(');
        out.appendDecimal(header.length);
        out.append(')');
    }
}

void printContents(ZxqGlobal& context, PrintBlock& out, const Line& line) {
    const TripleHeader& header = line.header;
    const std::int64_t count = header.clamped(line.triple.remaining);
    std::int64_t digits = 2 * count;
    std::string_view trailer;
    if ((context.flags & NoShort) == 0) {
        const std::int64_t room = kLineRoom - static_cast<std::int64_t>(out.column());
        const std::int64_t limit = shortenedLimit(context, room, room);
        if (digits > limit) {
            digits = limit;
            trailer = "...";
        }
    }
    const std::int64_t shown = digits > 0 ? (digits + 1) / 2 : 0;
    printHexPairs(out,
                  {line.triple.position + header.headerOctets, static_cast<std::int32_t>(shown)}, 1,
                  trailer);
}

}  // namespace

bool printHexadecimalLine(ZxqGlobal& context, ContentsReader& /*reader*/, const Line& line) {
    const TripleHeader& header = line.header;
    if (line.triple.position[0] == 0) {
        kxReportError(&context, kTagOfZero);
    }
    if (header.identifierOctets == kUnreadable) {
        printUnreadableRest(context, line);
        return true;
    }
    PrintBlock& out = printBlock(context);
    const bool faulty = reportFaults(context, line);
    if (!faulty) {
        out.append('\n');
    }
    out.startRow();
    printIdentifier(out, line, faulty || line.fixed);
    if (!header.isIndefinite()) {
        printLength(out, line);
        if (header.length == kUnreadable) {
            return true;
        }
    }
    if (!faulty && isEmptyIndefinite(line)) {
        out.append('\n');
        out.appendBlanks(indentation(line));
        out.append("00 00");
        return false;
    }
    if (faulty || !header.constructed) {
        printContents(context, out, line);
    }
    return faulty;
}

}  // namespace zxqtlv
