#include "tlv/contents_field.h"

#include <cstdint>

#include "contents/text_sink.h"
#include "runtime/flags.h"
#include "runtime/print.h"
#include "tlv/shortening.h"

namespace zxqtlv {
namespace {

constexpr std::int64_t kLineEnd = 79;  // characters

// Numbers and times say something else when they are cut.
bool isNeverCut(const Contents& contents, const TripleHeader& header) {
    if (contents.invalid || header.tagClass != TagClass::Universal) {
        return false;
    }
    switch (header.tagNumber) {
        case 2:   // INTEGER
        case 9:   // REAL
        case 23:  // UTCTime
        case 24:  // GeneralizedTime
            return true;
        default:
            return false;
    }
}

}  // namespace

void printContentsText(ZxqGlobal& context, const Contents& contents, const TripleHeader& header) {
    PrintBlock& out = printBlock(context);
    if ((context.flags & NoShort) != 0) {
        TextSink sink = TextSink::whole(out);
        writeContents(sink, contents, context.flags);
        sink.finish();
        return;
    }
    const std::int64_t room = kLineEnd - static_cast<std::int64_t>(out.column());
    const std::int64_t limit =
        shortenedLimit(context, room, isNeverCut(contents, header) ? kLongestText : room);
    if (limit > 0) {
        TextSink sink = TextSink::shortened(out, static_cast<std::size_t>(limit));
        writeContents(sink, contents, context.flags);
        sink.finish();
    }
}

}  // namespace zxqtlv
