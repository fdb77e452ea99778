// The repair mode as the driver runs it: the repair and the one outcome that is told.
#pragma once

#include <cstdint>

#include "runtime/context.h"

namespace zxqtlv {

// Runs the repair and prints its outcome, one of six, without a line feed at its end. With
// TextInput set it only says that text is not supported. Returns the status: what the repair gave,
// 0 for text.
std::int32_t fixAndReport(ZxqGlobal& context, const char* inputName, const char* fixedName);

}  // namespace zxqtlv
