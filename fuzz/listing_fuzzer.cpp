// Lists anything in any layout with any options, and checks what every listing keeps to.

#include <algorithm>
#include <cstring>

#include "harness.h"

namespace zxqtlv::fuzz {
namespace {

constexpr std::size_t kLineEnd = 79;

// Octets that are neither printable ASCII nor a line feed come from types that are shown as they
// stand, so they are octets of the input; the hexadecimal layout shows none.
void checkCharacters(const Listing& listing, const std::uint8_t* data, std::size_t size,
                     const Options& options) {
    for (const char character : listing.text) {
        if ((character >= ' ' && character <= '~') || character == '\n') {
            continue;
        }
        require(options.format != TlvFormat::Hexadecimal, "hexadecimal listings are plain ASCII");
        require(
            size != 0 && std::memchr(data, static_cast<unsigned char>(character), size) != nullptr,
            "a strange character is one of the input");
    }
}

// A line of the decomposed layout that was cut ends at the end of the line.
void checkShortening(const Listing& listing, const Options& options) {
    if (options.format != TlvFormat::Decomposed || (options.flags & NoShort) != 0) {
        return;
    }
    for (std::size_t start = 0; start < listing.text.size();) {
        const std::size_t end = std::min(listing.text.find('\n', start), listing.text.size());
        const std::string_view line(listing.text.data() + start, end - start);
        const bool numberOrTime = line.find("INTEGER") != std::string_view::npos ||
                                  line.find("Time") != std::string_view::npos ||
                                  line.find("REAL") != std::string_view::npos;
        const std::size_t colon = line.find(":d=");
        const bool row =
            colon != std::string_view::npos && line.find_first_not_of(" 0123456789") == colon;
        if (row && !numberOrTime && line.ends_with("...")) {
            require(line.size() <= std::max<std::size_t>(kLineEnd, 75 + colon),
                    "a cut line ends where the line does");
        }
        start = end + 1;
    }
}

}  // namespace
}  // namespace zxqtlv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zxqtlv::fuzz;
    Options options = takeOptions(data, size);
    const Listing listing = list(data, size, options);
    require(listing.status == 0 || listing.status == 17, "a listing ends with status 0 or 17");
    checkCharacters(listing, data, size, options);
    checkShortening(listing, options);
    // Once more, with the blocks of text split elsewhere.
    options.filler = options.filler == 0 ? 65500 : 0;
    const Listing again = list(data, size, options);
    require(again.status == listing.status && again.text == listing.text,
            "a listing does not depend on where its blocks end");
    return 0;
}
