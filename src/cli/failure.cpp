#include "cli/failure.h"

#include <array>

#include "cli/message_text.h"
#include "runtime/print.h"
#include "runtime/trap.h"

namespace zxqtlv {
namespace {

constexpr std::array<const char*, 16> kMessages{
    "",
    "Internal error #1.",
    "Internal error #2.",
    "Internal error #3.",
    "Missing mandatory input file name.",
    "Input file name is missing.",
    "Output file name is missing.",
    "Unidentified input parameter, %s.",
    "Too many input file names.",
    "Error reading, stdin.",
    "Too many output file names.",
    "Error opening output file, %s.",
    "Invalid offset into input file, %s.",
    "Invalid number of bytes to be read from input file, %s.",
    "The -pad option requires a mandatory parameter <byte>.",
    "Invalid pad byte, %s.",
};

constexpr char kUsage[] =
    "Usage:  %s [-b|-t] <input>  [+off[,num]] [-dec|-hex|-syn]\n"
    "               [-out <output>]  [-notitles]  [-noaddition]\n"
    "               [-pad  <byte> ]  [-noshort ]  [-help]%s";

constexpr char kHelp[] =
    "Options: (.D. indicates default)\n"
    "\n"
    "  -binary <infile>     .D.   print BER encoding from binary file\n"
    "  -text   <infile>     ...   print BER encoding from text file\n"
    "  +offset,num          ...   print \"num\" bytes starting at \"offset\" in\n"
    "                             input file\n"
    "  -decomposed          ...   print BER encoding in decomposed-TLV format\n"
    "  -hexadecimal         .D.   print BER encoding in hexadecimal-TLV format\n"
    "  -syntax              ...   print BER encoding in syntax-TLV format\n"
    "  -output <outfile>    ...   write output into file\n"
    "  -noaddition          ...   don't print additional clarifying value in hex\n"
    "                             for INTEGER and REAL types when printing in\n"
    "                             decomposed-TLV or syntax-TLV formats\n"
    "  -noshort             ...   don't truncate contents of BER encoding\n"
    "  -notitles            ...   don't print titles for type, length, contents\n"
    "                             fields when printing in syntax-TLV format\n"
    "  -pad <byte>          ...   skip padding areas between concatenated records\n"
    "                             filled with <byte>s, <byte> represents a hex\n"
    "                             number (e.g., 0x00 for hex 00, 0xFF for hex FF)\n"
    "                             or a non-negative decimal number from 0 to 255\n"
    "                             (e.g. 10 or 128)\n"
    "  -help                ...   print help information\n";

bool showsUsage(DriverStatus status) {
    return status >= kMissingInput && status <= kTooManyInputs;
}

}  // namespace

void fail(ZxqGlobal& context, DriverStatus status, const char* argument) {
    appendMessage(printBlock(context), kMessages[static_cast<std::size_t>(status)],
                  {std::string_view(argument)});
    if (showsUsage(status)) {
        zxqprint(&context, "%s", "\n\n");
        printUsage(context);
    }
    throw TrapFailure{status};
}

const char* internalErrorText(std::int32_t status) {
    return kMessages[static_cast<std::size_t>(status)];
}

void printUsage(ZxqGlobal& context) {
    zxqprint(&context, kUsage, "zxqtlv", "");
}

void printHelp(ZxqGlobal& context) {
    zxqprint(&context, "%s", kHelp);
}

}  // namespace zxqtlv
