#include "cli/loader.h"

#include <sys/mman.h>
#include <sys/types.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

#include "cli/hex_input.h"
#include "runtime/flags.h"
#include "runtime/kx_messages.h"

namespace zxqtlv {
namespace {

constexpr std::uint32_t kLoaded = 0;
constexpr std::int64_t kLineArea = 1024;  // characters of one read, its terminator included
constexpr std::int64_t kLargestPart = std::numeric_limits<std::int32_t>::max();

// Octets of the file, or -1 when it cannot be positioned in.
std::int64_t fileSize(std::FILE* stream) {
    return fseeko(stream, 0, SEEK_END) == 0 ? static_cast<std::int64_t>(ftello(stream)) : -1;
}

ContextBlock allocate(ZxqGlobal& context, std::int64_t octets) {
    // A negative size comes from a negative count and is as little to be had as one too large.
    return octets < 0
               ? ContextBlock()
               : ContextBlock(context, static_cast<std::size_t>(std::max(octets, std::int64_t{1})));
}

// Large blocks are touched all over, once: with large pages that takes far fewer page faults. A
// hint, so it does not matter whether it is taken.
void preferLargePages(const ContextBlock& block, std::size_t size) {
    constexpr std::uintptr_t kLargePage = 2 << 20;
    const auto start = reinterpret_cast<std::uintptr_t>(block.data());
    const std::uintptr_t skipped = (kLargePage - start % kLargePage) % kLargePage;
    if (size >= 2 * kLargePage) {
        static_cast<void>(
            madvise(block.data() + skipped, (size - skipped) & ~(kLargePage - 1), MADV_HUGEPAGE));
    }
}

std::uint32_t loadBinary(ZxqGlobal& context, std::FILE* stream, std::int64_t part,
                         std::int32_t spare, LoadedInput& input) {
    if (part > kLargestPart - spare) {
        return kCannotReadInput;
    }
    ContextBlock octets = allocate(context, part + spare);
    if (!octets || part < 0) {
        return kOutOfMemoryCode;
    }
    const auto size = static_cast<std::size_t>(part);
    preferLargePages(octets, size);
    if (std::fread(octets.data(), 1, size, stream) != size) {
        return kCannotReadInput;
    }
    std::memset(octets.data() + size, 0, static_cast<std::size_t>(spare));
    input.octets = std::move(octets);
    input.length = static_cast<std::int32_t>(part + spare);
    return kLoaded;
}

// Collects the digits of a text file, all or a slice, in a scratch area.
class TextReader {
  public:
    // `part` is the size of the file, or the count when that is smaller.
    TextReader(std::FILE* stream, char* scratch, std::int64_t part)
        : stream_(stream), scratch_(scratch), part_(part) {}

    // Reads lines into `line` and keeps the significant characters of the slice.
    std::uint32_t readSlice(Slice slice, char* line);
    // Reads what follows, whitespace included.
    void readRest();

    std::string_view text() const {
        return {scratch_,
                static_cast<std::size_t>(std::max(std::min(kept_, part_), std::int64_t{0}))};
    }

  private:
    // The next line's length, up to a NUL in it; false at the end of the file.
    bool readLine(char* line, std::int64_t& length);
    void keepSlice(std::string_view line, Slice& left);

    std::FILE* const stream_;
    char* const scratch_;
    const std::int64_t part_;
    std::int64_t read_ = 0;  // characters of all lines so far
    std::int64_t kept_ = 0;  // characters in the scratch area
};

bool TextReader::readLine(char* line, std::int64_t& length) {
    if (std::fgets(line, static_cast<int>(kLineArea), stream_) == nullptr) {
        return false;
    }
    length = static_cast<std::int64_t>(std::strlen(line));
    read_ += length;
    return true;
}

void TextReader::keepSlice(std::string_view line, Slice& left) {
    const bool counted = left.count != 0;
    for (const char character : line) {
        if (isWhitespace(character)) {
            continue;
        }
        if (left.offset > 0) {
            --left.offset;
            continue;
        }
        scratch_[kept_++] = character;
        if (counted && kept_ == left.count) {
            return;
        }
    }
}

std::uint32_t TextReader::readSlice(Slice slice, char* line) {
    Slice left = slice;
    std::int64_t length = 0;
    const auto complete = [&] {
        return slice.count != 0 ? kept_ == slice.count : left.offset <= 0;
    };
    while (!complete() && read_ < part_ && readLine(line, length)) {
        keepSlice({line, static_cast<std::size_t>(length)}, left);
    }
    if (left.offset > 0) {
        return kBadOffset;
    }
    return slice.count != 0 && kept_ != slice.count ? kBadCount : kLoaded;
}

void TextReader::readRest() {
    std::int64_t length = 0;
    while (read_ < part_ && readLine(scratch_ + kept_, length)) {
        kept_ += length;
    }
}

std::uint32_t convert(ZxqGlobal& context, std::string_view text, LoadedInput& input) {
    ContextBlock octets = allocate(context, static_cast<std::int64_t>((text.size() + 1) / 2));
    if (!octets) {
        return kOutOfMemoryCode;
    }
    const HexConversion conversion = convertHexText(text, octets.data());
    if (conversion.octets != 0) {
        input.octets = std::move(octets);
        input.length = static_cast<std::int32_t>(conversion.octets);
    }
    return conversion.clean ? kLoaded : static_cast<std::uint32_t>(kNotHexadecimal);
}

std::uint32_t loadText(ZxqGlobal& context, std::FILE* stream, Slice slice, std::int64_t part,
                       std::int32_t spare, LoadedInput& input) {
    if (part > kLargestPart) {
        return kCannotReadInput;
    }
    const ContextBlock scratch =
        allocate(context, part + kLineArea + std::min(part, kLineArea) + spare);
    if (!scratch) {
        return kOutOfMemoryCode;
    }
    TextReader reader(stream, reinterpret_cast<char*>(scratch.data()), part);
    if (slice.offset != 0 || slice.count != 0) {
        const ContextBlock line = allocate(context, kLineArea);
        if (!line) {
            return kOutOfMemoryCode;
        }
        if (const std::uint32_t code =
                reader.readSlice(slice, reinterpret_cast<char*>(line.data()));
            code != kLoaded) {
            return code;
        }
    }
    reader.readRest();
    return convert(context, reader.text(), input);
}

}  // namespace

std::uint32_t loadInput(ZxqGlobal& context, std::FILE* stream, Slice slice, std::int32_t spare,
                        LoadedInput& input) {
    input.reset();
    const bool isText = (context.flags & TextInput) != 0;
    const std::int64_t size = fileSize(stream);
    if (size < 1) {
        return kCannotReadInput;
    }
    if (!isText && slice.offset >= size) {
        return kBadOffset;
    }
    const std::int64_t start = isText ? 0 : slice.offset;
    if (fseeko(stream, start, SEEK_SET) != 0) {
        return kCannotReadInput;
    }
    std::int64_t part = size - start;
    if (slice.count != 0 && slice.count < part) {
        part = slice.count;
    }
    return isText ? loadText(context, stream, slice, part, spare, input)
                  : loadBinary(context, stream, part, spare, input);
}

}  // namespace zxqtlv
