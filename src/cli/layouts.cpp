#include "cli/layouts.h"

#include "tlv/decomposed_layout.h"
#include "tlv/hexadecimal_layout.h"
#include "tlv/syntax_layout.h"

namespace zxqtlv {

void printLayout(ZxqGlobal& context, TlvFormat format, EncodedBuffer& buffer) {
    switch (format) {
        case TlvFormat::None:
        case TlvFormat::Hexadecimal:
            printHexadecimal(context, buffer);
            break;
        case TlvFormat::Decomposed:
            printDecomposed(context, buffer);
            break;
        case TlvFormat::Syntax:
            printSyntax(context, buffer);
            break;
    }
}

}  // namespace zxqtlv
