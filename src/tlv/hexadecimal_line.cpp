#include "tlv/hexadecimal_line.h"

#include <algorithm>
#include <string_view>

#include "runtime/flags.h"
#include "runtime/hex_text.h"
#include "runtime/print.h"
#include "runtime/report.h"
#include "tlv/hex_pairs.h"
#include "tlv/shortening.h"

namespace zxqtlv {
namespace {

constexpr std::int64_t kLineRoom = 75;        // characters, the "..." and a blank not counted
constexpr std::size_t kShortIdentifier = 16;  // octets
// Characters of a short identifier, 127 length octets and what stands around them.
constexpr std::size_t kHeaderRoom = 320;

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

void printHeader(PrintBlock& out, const Line& line, bool faulty) {
    const TripleHeader& header = line.header;
    const auto identifierOctets = static_cast<std::size_t>(header.identifierOctets);
    char* end = startRow(out, line, !faulty, kHeaderRoom);
    // Nearly every header is two octets, the length in short form.
    if (header.headerOctets == 2 && header.length >= 0 && !faulty && !line.fixed) {
        end = writeHexPair(end, line.triple.position[0]);
        *end++ = ' ';
        out.commit(writeHexPair(end, line.triple.position[1]));
        return;
    }
    // Identifiers have no limit, but for nearly all the header goes into one piece.
    if (identifierOctets <= kShortIdentifier) {
        end = writeHexPairs(end, line.triple.position, identifierOctets);
    } else {
        out.commit(end);
        out.appendHex(line.triple.position, identifierOctets);
        end = out.reserve(kHeaderRoom);
    }
    end = writeTrailer(end, header.isIndefinite(), faulty || line.fixed);
    out.commit(header.isIndefinite() ? end : writeLengthOctets(end, line));
}

void printContents(ZxqGlobal& context, PrintBlock& out, const Line& line) {
    const TripleHeader& header = line.header;
    const std::int64_t count = header.clamped(line.triple.remaining);
    std::int64_t digits = 2 * count;
    bool cut = false;
    if ((context.flags & NoShort) == 0) {
        const std::int64_t room = kLineRoom - static_cast<std::int64_t>(out.column());
        const std::int64_t limit = shortenedLimit(context, room, room);
        if (digits > limit) {
            digits = limit;
            cut = true;
        }
    }
    const std::int64_t shown = digits > 0 ? (digits + 1) / 2 : 0;
    const std::uint8_t* const octets = line.triple.position + header.headerOctets;
    if (shown > kLineRoom) {
        printHexPairs(out, {octets, static_cast<std::int32_t>(shown)}, 1, cut ? "..." : "");
    } else if (shown > 0) {
        char* end = out.reserve(1 + 2 * kLineRoom + 3);
        *end++ = ' ';
        end = writeHexPairs(end, octets, static_cast<std::size_t>(shown));
        out.commit(cut ? writeText(end, "...") : end);
    }
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
    printHeader(out, line, faulty);
    if (faulty && header.length == kUnreadable) {
        return true;
    }
    if (!faulty && isEmptyIndefinite(line)) {
        out.commit(writeText(out.startLine(indentation(line), kHeaderRoom), "00 00"));
        return false;
    }
    if (faulty || !header.constructed) {
        printContents(context, out, line);
    }
    return faulty;
}

}  // namespace zxqtlv
