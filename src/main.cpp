// The program's entry.

#include <fcntl.h>
#include <unistd.h>

#include "cli/program.h"

namespace {

// A file opened while a standard descriptor is closed would take its place, and text meant for the
// terminal would go into that file. Read-only, so that writing there still fails.
void keepStandardDescriptors() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) == -1) {
            static_cast<void>(open("/dev/null", O_RDONLY));
        }
    }
}

}  // namespace

int main(int count, char** arguments) {
    keepStandardDescriptors();
    return zxqtlv::runProgram(count, arguments);
}
