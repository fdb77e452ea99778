#include "runtime/print_block.h"

#include <algorithm>

#include "runtime/print.h"

namespace zxqtlv {

void PrintBlock::handOver() {
    if (size_ == 0) {
        return;
    }
    text_[size_] = '\0';
    handedOver_ += size_;
    size_ = 0;  // before the print, which would hand over again
    zxqprint(owner_, "%s", text_.data());
}

char* PrintBlock::startDeepLine(std::size_t blanks, std::size_t count) {
    append('\n');
    startRow();
    appendManyBlanks(blanks);
    return reserve(count);
}

void PrintBlock::appendManyBlanks(std::size_t count) {
    while (count > 0) {
        const std::size_t piece = std::min(count, kCapacity);
        char* out = reserve(piece);
        std::memset(out, ' ', piece);
        commit(out + piece);
        count -= piece;
    }
}

void PrintBlock::appendLong(std::string_view text) {
    while (!text.empty()) {
        const std::size_t piece = std::min(text.size(), kCapacity);
        char* out = reserve(piece);
        std::memcpy(out, text.data(), piece);
        commit(out + piece);
        text.remove_prefix(piece);
    }
}

void PrintBlock::appendLongHex(const std::uint8_t* octets, std::size_t count) {
    constexpr std::size_t kPiece = kCapacity / 4;  // octets; small, to fill the block well
    while (count > 0) {
        const std::size_t piece = std::min(count, kPiece);
        commit(writeHexPairs(reserve(2 * piece), octets, piece));
        octets += piece;
        count -= piece;
    }
}

}  // namespace zxqtlv
