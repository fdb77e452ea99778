#include "tlv/decomposed_layout.h"

#include "contents/contents_text.h"
#include "runtime/print.h"
#include "tlv/decomposed_line.h"
#include "tlv/padding.h"
#include "tlv/triple_walk.h"

namespace zxqtlv {
namespace {

class DecomposedWalk {
  public:
    DecomposedWalk(ZxqGlobal& context, OctetView encoding)
        : context_(context),
          walk_(context, encoding),
          reader_(context, walk_.search()),
          recordStart_(encoding.position) {}

    void run();

  private:
    bool printTriple();
    bool leaveLevel();
    bool startNextRecord();
    void printClosing(OctetView octets);

    ZxqGlobal& context_;
    TripleWalk walk_;
    ContentsReader reader_;
    const std::uint8_t* recordStart_;
    long record_ = 1;
    std::int64_t total_ = 0;  // octets of the records and paddings before this record
};

void DecomposedWalk::run() {
    bool more = !walk_.atEnd();
    while (more) {
        const bool enterable = printTriple();
        if (enterable && walk_.descend()) {
            more = !walk_.atEnd() || leaveLevel();
            continue;
        }
        more = walk_.advance() ? walk_.depth() > 0 || startNextRecord() : leaveLevel();
    }
}

bool DecomposedWalk::printTriple() {
    const OctetView triple = walk_.triple();
    return !printDecomposedLine(
        context_, reader_,
        {triple, walk_.header(), walk_.depth() + 1, triple.position - recordStart_, false});
}

// Out of finished levels to the next triple. False when there is none.
bool DecomposedWalk::leaveLevel() {
    return walk_.leave([this](OctetView octets) { printClosing(octets); }) &&
           (walk_.depth() > 0 || startNextRecord());
}

// The line of whatever two octets stand behind the contents.
void DecomposedWalk::printClosing(OctetView octets) {
    const TripleHeader header = readHeader(octets, tagMask(context_));
    printDecomposedLine(context_, reader_,
                        {octets, header, walk_.depth() + 1, octets.position - recordStart_, true});
}

// Behind a record. False when padding alone is left.
bool DecomposedWalk::startNextRecord() {
    const std::int64_t recordOctets = walk_.triple().position - recordStart_;
    const std::int32_t padding = skipPadding(context_, walk_.triple());
    if (padding > 0) {
        walk_.skip(padding);
        if (walk_.atEnd()) {
            return false;
        }
    }
    total_ += recordOctets + padding;
    recordStart_ = walk_.triple().position;
    PrintBlock& out = printBlock(context_);
    out.append("\n\nConcatenated PDU #");
    out.appendDecimal(++record_);
    out.append(" detected at offset ");
    out.appendDecimal(total_);
    out.append(", printing ...\n");
    return true;
}

}  // namespace

void printDecomposed(ZxqGlobal& context, EncodedBuffer& buffer) {
    DecomposedWalk(context, buffer.view()).run();
    printBlock(context).handOver();
}

}  // namespace zxqtlv
