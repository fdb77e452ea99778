#include "tlv/syntax_layout.h"

#include "runtime/flags.h"
#include "runtime/print.h"
#include "tlv/record_walk.h"
#include "tlv/syntax_line.h"

namespace zxqtlv {

void printSyntax(ZxqGlobal& context, EncodedBuffer& buffer) {
    const ScopedFlags syntax(context.flags, SyntaxLayout);
    walkRecords(context, buffer, &printSyntaxLine);
    printBlock(context).handOver();
}

}  // namespace zxqtlv
