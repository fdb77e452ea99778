// From the chosen layout to its entry.
#pragma once

#include "runtime/context.h"
#include "tlv/format.h"
#include "tlv/octet_view.h"

namespace zxqtlv {

// Lists the buffer in the layout, the hexadecimal one when none was chosen. An empty buffer prints
// nothing.
void printLayout(ZxqGlobal& context, TlvFormat format, EncodedBuffer& buffer);

}  // namespace zxqtlv
