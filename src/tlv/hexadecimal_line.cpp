#include "tlv/hexadecimal_line.h"

#include <algorithm>

#include "runtime/flags.h"
#include "runtime/hex_text.h"
#include "runtime/print.h"
#include "runtime/report.h"
#include "tlv/shortening.h"

namespace zxqtlv {
namespace {

constexpr std::int64_t kLineRoom = 75;        // characters, the "..." and a blank not counted
constexpr std::size_t kShortIdentifier = 16;  // octets
// Characters of a short identifier, 127 length octets, contents and what stands around them.
constexpr std::size_t kRowRoom = 480;

// The rest of the level when not even the identifier can be read.
void printUnreadableRest(ZxqGlobal& context, const Line& line) {
    PrintBlock& out = printBlock(context);
    out.append('\n');
    if (line.triple.remaining > 0) {
        out.appendBlanks(indentation(line));
        out.appendHex(line.triple.position, static_cast<std::size_t>(line.triple.remaining));
    }
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

char* writeTrailer(char* out, bool indefinite, bool questioned) {
    *out++ = ' ';
    if (questioned) {
        *out++ = '?';
    }
    return indefinite ? writeText(out, "80") : out;
}

// Definite lengths only; as many length octets as there are.
char* writeLengthOctets(char* out, const Line& line) {
    const TripleHeader& header = line.header;
    OctetView octets = line.triple.from(header.identifierOctets);
    octets.remaining = std::min(octets.remaining, header.headerOctets - header.identifierOctets);
    if (line.fixed) {
        out = writeText(out, "00");
        octets = octets.from(1);
    }
    out = writeHexPairs(out, octets.position, static_cast<std::size_t>(octets.remaining));
    if (header.longForm) {
        *out++ = '(';
        out = writeDecimal(out, header.length);
        *out++ = ')';
    }
    return out;
}

// Writes to `end`, the room that a started row has. Returns where the row, in the room that is left
// or in a new one, goes on.
char* writeHeader(PrintBlock& out, char* end, const Line& line, bool faulty) {
    const TripleHeader& header = line.header;
    const auto identifierOctets = static_cast<std::size_t>(header.identifierOctets);
    // Nearly every header is two octets, the length in short form.
    if (header.headerOctets == 2 && header.length >= 0 && !faulty && !line.fixed) {
        end = writeHexPair(end, line.triple.position[0]);
        *end++ = ' ';
        return writeHexPair(end, line.triple.position[1]);
    }
    // Identifiers have no limit, but for nearly all the header goes into one piece.
    if (identifierOctets <= kShortIdentifier) {
        end = writeHexPairs(end, line.triple.position, identifierOctets);
    } else {
        out.commit(end);
        out.appendHex(line.triple.position, identifierOctets);
        end = out.reserve(kRowRoom);
    }
    end = writeTrailer(end, header.isIndefinite(), faulty || line.fixed);
    return header.isIndefinite() ? end : writeLengthOctets(end, line);
}

// Likewise.
char* writeContents(ZxqGlobal& context, PrintBlock& out, char* end, const Line& line) {
    const TripleHeader& header = line.header;
    const std::int64_t count = header.clamped(line.triple.remaining);
    std::int64_t digits = 2 * count;
    bool cut = false;
    if ((context.flags & NoShort) == 0) {
        const std::int64_t room = kLineRoom - static_cast<std::int64_t>(out.columnAt(end));
        const std::int64_t limit = shortenedLimit(context, room, room);
        if (digits > limit) {
            digits = limit;
            cut = true;
        }
    }
    if (digits <= 0) {
        return end;
    }
    const std::int64_t shown = (digits + 1) / 2;
    const std::uint8_t* const octets = line.triple.position + header.headerOctets;
    *end++ = ' ';
    if (shown > kLineRoom) {
        out.commit(end);
        out.appendHex(octets, static_cast<std::size_t>(shown));
        end = out.reserve(kRowRoom);
    } else {
        end = writeHexPairs(end, octets, static_cast<std::size_t>(shown));
    }
    return cut ? writeText(end, "...") : end;
}

}  // namespace

bool printHexadecimalLine(ZxqGlobal& context, ContentsReader& /*reader*/, const Line& line) {
    const TripleHeader& header = line.header;
    if (line.triple.position[0] == 0) {
        kxReportError(&context, kTagOfZero);
    }
    const bool sound = header.faults == 0 && !header.exceeds(line.triple.remaining);
    if (!sound && header.identifierOctets == kUnreadable) {
        printUnreadableRest(context, line);
        return true;
    }
    PrintBlock& out = printBlock(context);
    const bool faulty = !sound && reportFaults(context, line);
    char* end = writeHeader(out, startRow(out, line, !faulty, kRowRoom), line, faulty);
    const bool readable = !faulty || header.length != kUnreadable;
    if (readable && (faulty || !header.constructed)) {
        end = writeContents(context, out, end, line);
    }
    out.commit(end);
    if (!faulty && isEmptyIndefinite(line.triple, line.header)) {
        out.commit(writeText(out.startLine(indentation(line), kRowRoom), "00 00"));
    }
    return faulty;
}

}  // namespace zxqtlv
