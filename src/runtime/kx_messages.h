// The texts of the numbered KX messages.
//
// For: the two tables of 78 texts, one with printf placeholders for details and one without, and
// names for the codes that the code raises or treats specially.
// Not for: raising (runtime/report.h) or printing (the message hook does).
//
//     kxMessageBrief(36);  // "KX036E: Value misencoded, expected EOC not found ..."
#pragma once

#include <cstddef>
#include <cstdint>

namespace zxqtlv {

inline constexpr std::uint32_t kKxCodes = 78;
// Characters of "KX035E: ", the prefix of every text.
inline constexpr std::size_t kKxPrefix = 8;

enum MessageCode : std::uint32_t {
    kOutOfMemoryCode = 1,
    kMemoryViolation = 2,
    kSerializationError = 3,
    kTimeOutOfRange = 7,
    kEncodingError = 16,
    kPrematureEnd = 17,
    kContentsMisencoded = 18,
    kBadTagIndex = 19,
    kCopyError = 21,
    kLengthTooLong = 35,
    kEocNotFound = 36,
    kEocSecondOctet = 37,
    kHeaderTooLong = 38,
    kControlCharacter = 40,
    kMissingComponent = 41,
    kMissingIdentifier = 42,
    kMissingTypeReference = 43,
    kCannotOpenInput = 45,
    kCannotReadInput = 46,
    kBadOffset = 47,
    kBadCount = 48,
    kNotHexadecimal = 49,
    kCannotWriteOutput = 72,
    kTagOfZero = 73,
    kConstraintViolation = 74,
};

// The text of a code with "%s", "%ld" and "%#x" placeholders, and the one without; null for a
// code of kKxCodes or above. The two are one text where a code has no details.
const char* kxMessageDetailed(std::uint32_t code);
const char* kxMessageBrief(std::uint32_t code);

}  // namespace zxqtlv
