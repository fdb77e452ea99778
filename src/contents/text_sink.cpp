#include "contents/text_sink.h"

#include <algorithm>

namespace zxqtlv {
namespace {

constexpr std::string_view kDots = "...";

}  // namespace

TextSink TextSink::shortened(PrintBlock& block, std::size_t limit) {
    // One character more than is shown tells that the text is longer.
    return {Kind::Shortened, &block, block.reserve(limit + 1 + kPiece), limit + 1};
}

TextSink TextSink::whole(PrintBlock& block) {
    return {Kind::Whole, &block, block.reserve(kScratch), kRoom};
}

TextSink TextSink::counting(char* scratch) {
    return {Kind::Counting, nullptr, scratch, kRoom};
}

TextSink TextSink::into(char* text, std::size_t size) {
    return {Kind::Memory, nullptr, text, size + 1};  // never full
}

bool TextSink::makeRoom() {
    switch (kind_) {
        case Kind::Shortened:
        case Kind::Memory:
            return false;
        case Kind::Whole:
            block_->commit(out_);
            taken_ += static_cast<std::size_t>(out_ - start_);
            start_ = block_->reserve(kScratch);
            break;
        case Kind::Counting:
            taken_ += static_cast<std::size_t>(out_ - start_);
            break;
    }
    out_ = start_;
    end_ = start_ + kRoom;
    return true;
}

void TextSink::putHex(const std::uint8_t* octets, std::size_t count) {
    while (count > 0 && !full()) {
        // No more digits than are wanted, though the last octet may have one too many.
        const std::size_t wanted = (static_cast<std::size_t>(end_ - out_) + 1) / 2;
        const std::size_t piece = std::min(count, wanted);
        out_ = writeHexPairs(out_, octets, piece);
        octets += piece;
        count -= piece;
    }
}

std::size_t TextSink::finish() {
    if (kind_ == Kind::Shortened) {
        const auto limit = static_cast<std::size_t>(end_ - start_) - 1;
        if (out_ >= end_) {
            out_ = start_ + limit;
            const std::size_t dots = std::min(limit, kDots.size());
            std::memcpy(out_ - dots, kDots.data(), dots);
        }
    }
    if (block_ != nullptr) {
        block_->commit(out_);
    }
    return taken_ + static_cast<std::size_t>(out_ - start_);
}

}  // namespace zxqtlv
