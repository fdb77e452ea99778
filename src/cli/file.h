// An open C stream with an owner.
#pragma once

#include <cstdio>
#include <memory>

namespace zxqtlv {

struct FileCloser {
    // For streams that are read, or whose loss no longer matters; the others are closed by hand.
    void operator()(std::FILE* stream) const { static_cast<void>(std::fclose(stream)); }
};

using File = std::unique_ptr<std::FILE, FileCloser>;

}  // namespace zxqtlv
