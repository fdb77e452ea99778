#include "contents/contents_text.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <variant>

#include "contents/arcs_text.h"
#include "contents/character_text.h"
#include "contents/number_text.h"
#include "runtime/flags.h"
#include "runtime/hex_dump.h"
#include "runtime/memory.h"
#include "runtime/report.h"
#include "tlv/triple_walk.h"

namespace zxqtlv {
namespace {

constexpr std::uint32_t kSound = 0;

void putPieces(TextSink& sink, const StringContents& contents) {
    OctetCursor cursor(contents);
    while (const std::optional<OctetView> piece = cursor.nextPiece()) {
        if (sink.full()) {
            return;
        }
        sink.putHex(piece->position, static_cast<std::size_t>(piece->remaining));
    }
}

// One writer for each kind of decoded value.
class ValueWriter {
  public:
    ValueWriter(TextSink& sink, const Contents& contents, std::uint32_t flags)
        : sink_(sink), contents_(contents), flags_(flags) {}

    void operator()(NullValue /*value*/) const { sink_.put("NULL"); }
    void operator()(bool value) const { sink_.put(value ? "TRUE" : "FALSE"); }
    void operator()(std::int32_t value) const { writeInteger(sink_, value, addition()); }
    void operator()(const HugeInteger& value) const {
        formatHugeInteger(sink_, value.octets, addition());
    }
    void operator()(const BitString& value) const {
        sink_.putHexPair(static_cast<std::uint8_t>(value.contents.unusedBits));
        putPieces(sink_, value.contents);
    }
    void operator()(const OctetString& value) const { putPieces(sink_, value.contents); }
    void operator()(const IdentifierArcs& value) const {
        writeArcs(sink_, value, (flags_ & SyntaxLayout) != 0);
    }
    void operator()(double value) const { writeReal(sink_, value, addition()); }
    void operator()(const CharacterString& value) const {
        if (value.mode == CharacterMode::Plain) {
            writePlainString(sink_, value.contents);
        } else {
            formatCharacterString(sink_, value.contents, value.mode);
        }
    }
    void operator()(const TimeValue& /*value*/) const {
        sink_.put(std::string_view(contents_.timeText.data()));
    }

  private:
    bool addition() const { return (flags_ & NoAddition) == 0; }

    TextSink& sink_;
    const Contents& contents_;
    const std::uint32_t flags_;
};

char* allocateText(ZxqGlobal& context, std::size_t size) {
    auto* const text = static_cast<char*>(contextAllocate(context, size));
    if (text == nullptr) {
        kxReportError(&context, kOutOfMemoryCode);
    }
    return text;
}

}  // namespace

ContentsReader::ContentsReader(ZxqGlobal& context, EndSearch& search)
    : context_(context), search_(search), types_(*context.controlTable) {}

const Contents& ContentsReader::readFurther(OctetView triple, const TripleHeader& header) {
    contents_.present = false;
    contents_.invalid = false;
    contents_.decoded = false;
    if (triple.remaining <= 0) {
        kxReportError(&context_, kPrematureEnd);
        return contents_;
    }
    if (!header.fits(triple.remaining)) {
        return contents_;
    }
    std::uint32_t noted = kSound;
    if (const BuiltInType* const type = typeOf(header); type != nullptr) {
        noted = decode(*type, triple, header);
        if (noted == kSound) {
            contents_.present = true;
            contents_.decoded = true;
            return contents_;
        }
    }
    if (noted == kOutOfMemoryCode) {
        kxReportError(&context_, kOutOfMemoryCode);
        return contents_;
    }
    if (const std::uint32_t fault = readOctets(triple, header, contents_.octets); fault != kSound) {
        noted = fault;
    }
    contents_.present = contents_.octets.remaining > 0;
    contents_.invalid = noted != kSound;
    return contents_;
}

// Whether the triple lies in a string whose segments have all been checked, as one of them.
bool ContentsReader::isCheckedSegment(OctetView triple, const TripleHeader& header) const {
    return checked_.position != nullptr && triple.position >= checked_.position &&
           triple.position < checked_.position + checked_.remaining &&
           header.tagNumber == static_cast<std::int64_t>(checkedTag_);
}

std::uint32_t ContentsReader::decode(const BuiltInType& type, OctetView triple,
                                     const TripleHeader& header) {
    traceEncoding(context_, triple.position,
                  header.isIndefinite() ? triple.remaining
                                        : header.headerOctets + header.clamped(triple.remaining));
    StringContents string;
    if (header.constructed) {
        if (isCheckedSegment(triple, header)) {
            return kSound;
        }
        const SegmentStatus status = readSegments(context_, triple, header, type.segments, string);
        if (status != SegmentStatus::Sound) {
            return status == SegmentStatus::NoMemory ? kOutOfMemoryCode : kContentsMisencoded;
        }
    } else if (!readPrimitive(triple, header, type.segments, string)) {
        return kContentsMisencoded;
    }
    if (!type.decode(string, contents_.value)) {
        return kContentsMisencoded;
    }
    if (const auto* const time = std::get_if<TimeValue>(&contents_.value); time != nullptr) {
        const std::uint32_t code =
            formatTimeText(time->time, contents_.timeText.data(), time->utcTime);
        if (code != kSound) {
            return code;
        }
    }
    if (header.constructed) {
        checked_ = string.octets;
        checkedTag_ = type.segments;
    }
    return kSound;
}

// The contents octets for a text in hexadecimal; those of an indefinite triple include what closes
// it. Returns what is wrong with their length.
std::uint32_t ContentsReader::readOctets(OctetView triple, const TripleHeader& header,
                                         OctetView& octets) {
    octets = triple.from(header.headerOctets);
    if (!header.isIndefinite()) {
        const bool cut = header.exceeds(triple.remaining);
        octets.remaining = header.clamped(triple.remaining);
        return cut ? static_cast<std::uint32_t>(kLengthTooLong) : kSound;
    }
    const ScopedFlags quiet(context_.flags, QuietNonFatal);
    if (const std::optional<OctetView> next = nextTriple(context_, search_, triple, header)) {
        octets.remaining = static_cast<std::int32_t>(next->position - octets.position);
        return kSound;
    }
    const bool closed = octets.remaining > 2 || octets.atEndOfContents();
    return closed ? kSound : static_cast<std::uint32_t>(kContentsMisencoded);
}

void writeContents(TextSink& sink, const Contents& contents, std::uint32_t flags) {
    if (contents.decoded) {
        std::visit(ValueWriter(sink, contents, flags), contents.value);
    } else {
        sink.putHex(contents.octets.position, static_cast<std::size_t>(contents.octets.remaining));
    }
}

void formatHexOctets(const std::uint8_t* octets, std::uint32_t count, char* out) {
    writeHexPairs(out, octets, count);
}

char* contentsToHex(ZxqGlobal* context, const std::uint8_t* octets, std::uint32_t count) {
    char* const text = allocateText(*context, 2 * std::size_t{count} + 1);
    if (text != nullptr) {
        formatHexOctets(octets, count, text);
        text[2 * std::size_t{count}] = '\0';
    }
    return text;
}

char* formatContentsText(ZxqGlobal* context, const std::uint8_t* tlv, std::int32_t remaining) {
    if (tlv == nullptr) {
        remaining = 0;
    }
    const OctetView triple{tlv, remaining};
    EndSearch search(*context, tlv);
    ContentsReader reader(*context, search);
    const Contents& contents = reader.read(triple, readHeader(triple, tagMask(*context)));
    if (contents.invalid) {
        context->flags |= InvalidContents;
    }
    if (!contents.present) {
        return nullptr;
    }
    std::array<char, TextSink::kScratch> scratch;
    TextSink counting = TextSink::counting(scratch.data());
    writeContents(counting, contents, context->flags);
    const std::size_t size = counting.finish();
    char* const text = allocateText(*context, size + 1);
    if (text != nullptr) {
        TextSink sink = TextSink::into(text, size);
        writeContents(sink, contents, context->flags);
        text[sink.finish()] = '\0';
    }
    return text;
}

}  // namespace zxqtlv
