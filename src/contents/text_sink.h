// Where contents text is written: as much of it as is wanted, and no more.
//
// For: writers that do not care whether their text goes into a line, shortened or whole, or into a
// caller's memory. They ask `full` before each piece and stop when it is.
// Not for: deciding how long a text may be; tlv/shortening.h and the layouts do.
//
//     TextSink sink = TextSink::shortened(block, 40);
//     while (more && !sink.full()) { sink.put(piece); }
//     sink.finish();
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "runtime/hex_text.h"
#include "runtime/print_block.h"

namespace zxqtlv {

class TextSink {
  public:
    // The longest piece that may be put between two looks at `full`, in characters.
    static constexpr std::size_t kPiece = 256;

    static constexpr std::size_t kScratch = 4096 + kPiece;

    // Into the block, at most `limit` (up to 1024) characters: a longer text ends in three dots.
    static TextSink shortened(PrintBlock& block, std::size_t limit);
    // Into the block, whole.
    static TextSink whole(PrintBlock& block);
    // Nowhere, by way of kScratch characters; `finish` tells the length.
    static TextSink counting(char* scratch);
    // Into `text`, which has room for the whole text of `size` characters.
    static TextSink into(char* text, std::size_t size);

    // No more text is wanted. A sink that takes all makes room here.
    bool full() { return out_ >= end_ && !makeRoom(); }

    void put(char character) { *out_++ = character; }
    void put(std::string_view piece) {
        std::memcpy(out_, piece.data(), piece.size());
        out_ += piece.size();
    }
    void putHexPair(std::uint8_t octet) { out_ = writeHexPair(out_, octet); }
    void putDecimal(std::int64_t value) { out_ = writeDecimal(out_, value); }
    // Any number of octets, two upper-case digits each, as far as they are wanted.
    void putHex(const std::uint8_t* octets, std::size_t count);

    // Ends the text. Returns the characters that were taken.
    std::size_t finish();

  private:
    enum class Kind { Shortened, Whole, Counting, Memory };
    static constexpr std::size_t kRoom = kScratch - kPiece;

    TextSink(Kind kind, PrintBlock* block, char* start, std::size_t room)
        : kind_(kind), block_(block), start_(start), out_(start), end_(start + room) {}
    bool makeRoom();

    Kind kind_;
    PrintBlock* block_;
    char* start_;
    char* out_;
    char* end_;              // a text that reaches it is longer than wanted, or needs room
    std::size_t taken_ = 0;  // characters that have left
};

}  // namespace zxqtlv
