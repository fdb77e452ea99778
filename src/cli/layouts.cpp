#include "cli/layouts.h"

#include "tlv/hexadecimal_layout.h"

namespace zxqtlv {

void printLayout(ZxqGlobal& context, TlvFormat /*format*/, EncodedBuffer& buffer) {
    printHexadecimal(context, buffer);
}

}  // namespace zxqtlv
