// The tool's own control table.
#pragma once

#include "runtime/control_table.h"

namespace zxqtlv {

// What the program initialises its context with.
const ControlTable& toolTable();

}  // namespace zxqtlv
