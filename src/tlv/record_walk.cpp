#include "tlv/record_walk.h"

#include "contents/contents_text.h"
#include "contents/tag_text.h"
#include "runtime/flags.h"
#include "runtime/print.h"
#include "runtime/runtime_private.h"
#include "tlv/long_form_recovery.h"
#include "tlv/padding.h"
#include "tlv/triple_walk.h"

namespace zxqtlv {
namespace {

class RecordWalk {
  public:
    RecordWalk(ZxqGlobal& context, EncodedBuffer& buffer, LinePrinter printLine)
        : context_(context),
          buffer_(buffer),
          walk_(context, buffer.view()),
          reader_(context, walk_.search()),
          printLine_(printLine) {}

    std::int32_t run();

  private:
    bool startRecord();
    bool printTriple();
    bool leaveLevel();
    void printClosing(OctetView octets);

    bool fixing() const { return (context_.flags & FixEncoding) != 0; }

    ZxqGlobal& context_;
    EncodedBuffer& buffer_;
    TripleWalk walk_;
    ContentsReader reader_;
    const LinePrinter printLine_;
    long record_ = 0;     // the first is 1
    bool titled_ = true;  // the next line is the first of its level
};

std::int32_t RecordWalk::run() {
    bool inLevel = true;
    while (inLevel || leaveLevel()) {
        if (walk_.atEnd() || (walk_.depth() == 0 && !startRecord()) || printTriple()) {
            if (walk_.depth() == 0) {
                break;
            }
            inLevel = false;
            continue;
        }
        titled_ = walk_.descend();
        inLevel = titled_ || walk_.advance();
    }
    return walk_.triple().remaining;
}

// At depth 0 only. False when no record follows.
bool RecordWalk::startRecord() {
    ++record_;
    if (fixing() && walk_.triple().remaining <= context_.runtimePrivate->stopPoint) {
        return false;
    }
    if (const std::int32_t skipped = skipPadding(context_, walk_.triple()); skipped > 0) {
        walk_.skip(skipped);
        if (walk_.atEnd()) {
            return false;
        }
    }
    if (record_ > 1) {
        PrintBlock& out = printBlock(context_);
        out.append("\n\nConcatenated record #");
        out.appendDecimal(record_);
        out.append(" detected, printing ...\n");
        titled_ = true;
    }
    return true;
}

// True when the level ends behind the line.
bool RecordWalk::printTriple() {
    const bool fixed = fixing() && (context_.flags & SyntaxLayout) == 0 &&
                       recoverLongForm(context_, walk_, buffer_);
    return printLine_(context_, reader_,
                      {walk_.triple(), walk_.header(), walk_.depth(), titled_, fixed});
}

// Out of finished levels to the next triple. False when there is none.
bool RecordWalk::leaveLevel() {
    titled_ = false;
    return walk_.leave([this](OctetView octets) { printClosing(octets); });
}

// What stands behind the contents goes by its name: anything but an end-of-contents pair is left
// to the search for the next triple.
void RecordWalk::printClosing(OctetView octets) {
    TagText storage;
    const TripleHeader header = readHeader(octets, tagMask(context_));
    if (tagName(context_, octets, header, storage) != kEndOfContentsName) {
        return;
    }
    PrintBlock& out = printBlock(context_);
    out.append('\n');
    out.appendBlanks(2 * walk_.depth());
    out.append((context_.flags & SyntaxLayout) != 0 ? kEndOfContentsName : "00 00");
}

}  // namespace

std::int32_t walkRecords(ZxqGlobal& context, EncodedBuffer& buffer, LinePrinter printLine) {
    return RecordWalk(context, buffer, printLine).run();
}

}  // namespace zxqtlv
