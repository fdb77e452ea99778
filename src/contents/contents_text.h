// What the contents octets of a triple mean, as text.
//
// For: interpreting contents with the built-in type of their universal tag, and falling back to
// hexadecimal where there is none or the contents are none of it.
// Not for: shortening or placing the text in a line; the layouts do.
//
// In two steps, because a layout must know whether contents are valid before it prints, and needs
// no text for a constructed triple whose contents are: `read` decides, `writeContents` writes.
//
//     const Contents contents = reader.read(triple, header);
//     if (contents.present) { writeContents(sink, contents, context.flags); }
#pragma once

#include <array>
#include <cstdint>

#include "codec/built_in_types.h"
#include "codec/values.h"
#include "contents/text_sink.h"
#include "contents/time_text.h"
#include "runtime/context.h"
#include "tlv/end_search.h"
#include "tlv/header.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

struct Contents {
    bool present = false;  // there is a text; it may be empty
    bool invalid = false;  // the contents could not be interpreted; any text is hexadecimal
    bool decoded = false;  // `value` holds them, else `octets` does
    DecodedValue value;
    OctetView octets{nullptr, 0};
    std::array<char, kTimeText> timeText;  // of a time value, NUL-terminated
};

class ContentsReader {
  public:
    // `search` belongs to the walk over the same encoding.
    ContentsReader(ZxqGlobal& context, EndSearch& search);

    // The contents of the triple whose header was read at `triple`. Neither present nor invalid
    // where nothing remains (KX017E has been raised), where the header does not fit, and where
    // memory is exhausted (KX001S has been raised). An unreadable header inside an indefinite
    // triple is fatal (KX017E, silent). What comes back is good until the next call.
    const Contents& read(OctetView triple, const TripleHeader& header) {
        // Nearly every constructed triple, and many others, are of no type and whole.
        if (header.length >= 0 && header.fits(triple.remaining) &&
            !header.exceeds(triple.remaining) && typeOf(header) == nullptr) {
            contents_.present = header.length > 0;
            contents_.invalid = false;
            contents_.decoded = false;
            contents_.octets = {triple.position + header.headerOctets, header.length};
            return contents_;
        }
        return readFurther(triple, header);
    }

  private:
    const Contents& readFurther(OctetView triple, const TripleHeader& header);
    std::uint32_t decode(const BuiltInType& type, OctetView triple, const TripleHeader& header);
    const BuiltInType* typeOf(const TripleHeader& header) const {
        return header.tagClass == TagClass::Universal ? types_.find(header.tagNumber, header.length)
                                                      : nullptr;
    }
    std::uint32_t readOctets(OctetView triple, const TripleHeader& header, OctetView& octets);
    bool isCheckedSegment(OctetView triple, const TripleHeader& header) const;

    ZxqGlobal& context_;
    EndSearch& search_;
    Contents contents_;
    BuiltInTypeIndex types_;
    // Segments of the last constructed string found valid; those inside it are valid with it.
    OctetView checked_{nullptr, 0};
    SegmentTag checkedTag_ = SegmentTag::None;
};

// Writes the text of contents that are present. NoAddition and SyntaxLayout of `flags` count.
void writeContents(TextSink& sink, const Contents& contents, std::uint32_t flags);

// Two upper-case digits for each octet, without a terminator.
void formatHexOctets(const std::uint8_t* octets, std::uint32_t count, char* out);

// The octets as NUL-terminated digits, to be given back with `freeText`; null after raising KX001S.
char* contentsToHex(ZxqGlobal* context, const std::uint8_t* octets, std::uint32_t count);

// The contents text of the triple at `tlv`, whole and NUL-terminated, to be given back with
// `freeText`. Sets InvalidContents where the text is a substitute. Null where there is no text.
char* formatContentsText(ZxqGlobal* context, const std::uint8_t* tlv, std::int32_t remaining);

}  // namespace zxqtlv
