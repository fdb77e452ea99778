// The program around the driver: context, banner, message hook, exit status.
#pragma once

#include <cstdint>

namespace zxqtlv {

// Runs the tool with the arguments of `main` and returns its exit status. A listing that did not
// reach standard output makes it 72 and is told on standard error.
std::int32_t runProgram(int count, char* const* arguments);

}  // namespace zxqtlv
