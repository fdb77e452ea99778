#include "contents/character_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string_view>

namespace zxqtlv {
namespace {

constexpr char kLowerHexDigits[] = "0123456789abcdef";

std::uint32_t octetOrNul(int octet) {
    return octet < 0 ? 0U : static_cast<std::uint32_t>(octet);
}

std::uint32_t readUtf8(OctetCursor& cursor) {
    const auto first = static_cast<std::uint8_t>(octetOrNul(cursor.next()));
    const int octets = std::countl_one(first);
    if (octets == 0) {
        return first;
    }
    if (octets == 1 || octets > 6) {
        return 0;
    }
    std::uint32_t code = first & (0x7FU >> octets);
    bool sound = true;
    for (int i = 1; i < octets; ++i) {
        const std::uint32_t octet = octetOrNul(cursor.peek());
        // The string ends at a NUL, also inside a sequence.
        if (octet == 0) {
            return 0;
        }
        cursor.next();
        sound = sound && (octet & 0xC0) == 0x80;
        code = code * 64 + (octet & 0x3F);
    }
    return sound ? code : 0;
}

void putEscape(TextSink& sink, std::uint32_t code, int width) {
    sink.put('\\');
    sink.put(width == 1 ? 'x' : width == 2 ? 'u' : 'U');
    for (int shift = 8 * width - 4; shift >= 0; shift -= 4) {
        sink.put(kLowerHexDigits[(code >> shift) & 15]);
    }
}

void putCharacter(TextSink& sink, std::uint32_t code, int width) {
    if (code < 0x20 || code > 0x7E) {
        putEscape(sink, code, width);
        return;
    }
    if (code == '\\') {
        sink.put('\\');
    }
    sink.put(static_cast<char>(code));
}

// Characters of one octet that stand for themselves, as far as they go. False where there is none.
bool putPlainRun(TextSink& sink, OctetCursor& cursor) {
    const OctetView piece = cursor.piece();
    const std::int32_t most =
        std::min(piece.remaining, static_cast<std::int32_t>(TextSink::kPiece));
    std::int32_t count = 0;
    for (; count < most; ++count) {
        const std::uint8_t octet = piece.position[count];
        if (octet < 0x20 || octet > 0x7E || octet == '\\') {
            break;
        }
        sink.put(static_cast<char>(octet));
    }
    cursor.skip(count);
    return count > 0;
}

bool atEnd(OctetCursor& cursor, CharacterMode mode) {
    const int octet = cursor.peek();
    return octet < 0 || (octet == 0 && mode == CharacterMode::Utf8);
}

}  // namespace

int escapeWidth(CharacterMode mode) {
    switch (mode) {
        case CharacterMode::Bmp:
            return 2;
        case CharacterMode::Universal:
        case CharacterMode::Utf8:
            return 4;
        case CharacterMode::Plain:
        case CharacterMode::Ia5:
            break;
    }
    return 1;
}

std::uint32_t readCharacter(OctetCursor& cursor, CharacterMode mode) {
    if (mode == CharacterMode::Utf8) {
        return readUtf8(cursor);
    }
    std::uint32_t code = 0;
    for (int octets = escapeWidth(mode); octets > 0; --octets) {
        code = (code << 8) | octetOrNul(cursor.next());
    }
    return code;
}

void formatCharacterString(TextSink& sink, const StringContents& contents, CharacterMode mode) {
    const int width = escapeWidth(mode);
    OctetCursor cursor(contents);
    const bool ofOneOctet = mode == CharacterMode::Ia5 || mode == CharacterMode::Utf8;
    while (!sink.full() && !atEnd(cursor, mode)) {
        if (!ofOneOctet || !putPlainRun(sink, cursor)) {
            putCharacter(sink, readCharacter(cursor, mode), width);
        }
    }
}

std::size_t measureCharacterString(const StringContents& contents, CharacterMode mode) {
    std::array<char, TextSink::kScratch> scratch;
    TextSink sink = TextSink::counting(scratch.data());
    formatCharacterString(sink, contents, mode);
    return sink.finish();
}

void writePlainString(TextSink& sink, const StringContents& contents) {
    OctetCursor cursor(contents);
    for (std::optional<OctetView> piece = cursor.nextPiece(); piece && !sink.full();
         piece = cursor.nextPiece()) {
        const auto* const start = reinterpret_cast<const char*>(piece->position);
        const std::string_view text(start, static_cast<std::size_t>(piece->remaining));
        // A piece may be far longer than what is wanted of it.
        std::size_t taken = 0;
        while (taken < text.size() && !sink.full()) {
            const std::string_view part = text.substr(taken, TextSink::kPiece);
            const std::size_t nul = part.find('\0');
            sink.put(part.substr(0, nul));
            if (nul != std::string_view::npos) {
                return;
            }
            taken += part.size();
        }
    }
}

}  // namespace zxqtlv
