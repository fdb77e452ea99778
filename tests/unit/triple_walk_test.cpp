#include "tlv/triple_walk.h"

#include <functional>
#include <random>
#include <sstream>

#include "cli/layouts.h"
#include "cli/tool_table.h"
#include "runtime/flags.h"
#include "runtime/report.h"
#include "runtime/trap.h"
#include "support/case_file.h"
#include "unit/fixture.h"

namespace zxqtlv {
namespace {

using test::TestContext;

using Step = std::optional<OctetView>;

TripleHeader headerOf(OctetView triple) {
    return readHeader(triple, kBerTagMask);
}

// Plain recursion over the nesting: slow and hungry for stack, but with nothing to go wrong.
Step recursiveNext(ZxqGlobal& context, OctetView triple) {
    if (triple.remaining <= 0) {
        return std::nullopt;
    }
    const TripleHeader header = headerOf(triple);
    if (header.length == kUnreadable) {
        kxReportError(&context, kPrematureEnd, reinterpret_cast<std::uintptr_t>(triple.position),
                      triple.remaining);
        return std::nullopt;
    }
    if (!header.isIndefinite()) {
        const std::int64_t whole = std::int64_t{header.headerOctets} + header.length;
        return whole < triple.remaining ? Step(triple.from(static_cast<std::int32_t>(whole)))
                                        : std::nullopt;
    }
    Step inner = triple.from(header.headerOctets);
    {
        const ScopedFlags quiet(context.flags, QuietNonFatal);
        while (inner.has_value() && !inner->atEndOfContents()) {
            inner = recursiveNext(context, *inner);
        }
    }
    if (!inner.has_value()) {
        kxReportError(&context, kEocNotFound);
        return std::nullopt;
    }
    return inner->remaining > 2 ? Step(inner->from(2)) : std::nullopt;
}

Step recursiveContents(ZxqGlobal& context, OctetView triple) {
    const TripleHeader header = headerOf(triple);
    if (!header.constructed || header.headerOctets < 1) {
        return std::nullopt;
    }
    const ScopedFlags quiet(context.flags, QuietNonFatal);
    const Step behind = recursiveNext(context, triple);
    const std::int32_t count = triple.remaining - header.headerOctets -
                               (behind.has_value() ? behind->remaining : 0) -
                               (header.isIndefinite() ? 2 : 0);
    return count != 0 ? Step({triple.position + header.headerOctets, count}) : std::nullopt;
}

void writeMessages(std::ostream& log) {
    for (const test::Message& message : TestContext::takeMessages()) {
        log << " KX" << message.code << ' ' << message.detail1 << ' ' << message.detail2;
    }
}

using Operation = std::function<Step(OctetView)>;

// Goes through all triples as the layouts do, and writes down what the operations answered.
void walk(const Operation& contentsAt, const Operation& nextTo, OctetView level,
          std::ostream& log) {
    for (Step triple = level; triple.has_value() && triple->remaining > 0;) {
        const std::uint8_t* const start = triple->position;
        log << " (";
        if (const Step contents = contentsAt(*triple); contents.has_value()) {
            log << contents->position - start << ':' << contents->remaining;
            walk(contentsAt, nextTo, *contents, log);
        }
        log << ')';
        triple = nextTo(*triple);
        if (triple.has_value()) {
            log << ' ' << triple->position - start << ':' << triple->remaining;
        }
        writeMessages(log);
    }
}

std::string walkLog(OctetView encoding, std::uint32_t flags, bool recursive) {
    TestContext context;
    ZxqGlobal& global = context.global;
    global.flags = flags;
    std::ostringstream log;
    const std::int32_t code = TrapGuard(global, GuardKind::Driver).run([&] {
        EndSearch search(global, encoding.position);
        walk(
            [&](OctetView triple) {
                return recursive ? recursiveContents(global, triple)
                                 : contentsOf(global, search, triple, headerOf(triple));
            },
            [&](OctetView triple) {
                return recursive ? recursiveNext(global, triple)
                                 : nextTriple(global, search, triple, headerOf(triple));
            },
            encoding, log);
    });
    writeMessages(log);
    log << " status " << code << ' ' << kxLastError(&global);
    return log.str();
}

TEST(EndSearch, AnswersLikeARecursionOverTheNesting) {
    std::istringstream list(
        "30 80|30 80|3080*6|00 00|00 00|00 00|05 00|04 80|30 00|00|1F|1F 81 00 80|30 02 05 00|04 "
        "82|"
        "30 04 30 80 00 00|30 03 30 80 05|31 82 00 06|A0 84 FF FF FF FF|30 08|02 01 05");
    std::vector<std::string> tokens;
    for (std::string token; std::getline(list, token, '|');) {
        tokens.push_back(token + ' ');
    }
    std::mt19937 random(20240607);
    for (int round = 0; round < 6000; ++round) {
        std::string text;
        for (auto count = random() % 14; count > 0; --count) {
            text += tokens[random() % tokens.size()];
        }
        SCOPED_TRACE(text);
        const std::string octets = test::octetsFromHex(text);
        const OctetView encoding{reinterpret_cast<const std::uint8_t*>(octets.data()),
                                 static_cast<std::int32_t>(octets.size())};
        for (const std::uint32_t flags : {0U, 0x40U, 0x80U, 0x2000040U}) {
            ASSERT_EQ(walkLog(encoding, flags, false), walkLog(encoding, flags, true));
        }
    }
}

TEST(RecordWalk, RepairsInTheHexadecimalLayoutAlone) {
    TestContext context;
    context.global.controlTable = &toolTable();
    context.global.flags |= FixEncoding | TraceFixes;
    const std::string damaged = test::octetsFromHex("04 00 83 41*131");
    for (const TlvFormat format : {TlvFormat::Syntax, TlvFormat::Hexadecimal}) {
        std::string octets = damaged;
        EncodedBuffer buffer{static_cast<std::int32_t>(octets.size()),
                             reinterpret_cast<std::uint8_t*>(octets.data())};
        printLayout(context.global, format, buffer);
        EXPECT_EQ(octets[1] == '\x81', format == TlvFormat::Hexadecimal);
        EXPECT_EQ(octets.substr(2), damaged.substr(2));
    }
}

}  // namespace
}  // namespace zxqtlv
