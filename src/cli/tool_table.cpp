#include "cli/tool_table.h"

#include "codec/built_in_types.h"

namespace zxqtlv {

const ControlTable& toolTable() {
    static const ControlTable kTable{nullptr, builtInTypes(), kControlTableVersion, 0};
    return kTable;
}

}  // namespace zxqtlv
