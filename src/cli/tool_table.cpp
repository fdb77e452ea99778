#include "cli/tool_table.h"

namespace zxqtlv {

const ControlTable& toolTable() {
    static constexpr ControlTable kTable{nullptr, nullptr, kControlTableVersion, 0};
    return kTable;
}

}  // namespace zxqtlv
