// Character strings as one line of plain ASCII.
//
// For: printable characters as they are, a backslash twice, all others as escapes with their code
// in hexadecimal: \x09, \u00e9, \U000000e9.
// Not for: the types whose octets are shown as they stand (NumericString, PrintableString, ...).
#pragma once

#include <cstddef>
#include <cstdint>

#include "codec/segments.h"
#include "codec/values.h"
#include "contents/text_sink.h"

namespace zxqtlv {

// Octets in which an escape writes a character code: 1, 2 or 4.
int escapeWidth(CharacterMode mode);

// The next character code, moving `cursor` behind it. A multi-octet unit comes most significant
// octet first. UTF-8 that is not well-formed gives 0 and skips as many octets as its first octet
// announces; sequences of five and six octets, overlong forms and surrogates are accepted. The end
// of a string reads as a NUL.
std::uint32_t readCharacter(OctetCursor& cursor, CharacterMode mode);

// Writes the string, in UTF-8 mode up to its first NUL.
void formatCharacterString(TextSink& sink, const StringContents& contents, CharacterMode mode);

// The exact number of characters that `formatCharacterString` writes.
std::size_t measureCharacterString(const StringContents& contents, CharacterMode mode);

// Writes the octets up to the first NUL as they stand.
void writePlainString(TextSink& sink, const StringContents& contents);

}  // namespace zxqtlv
