// A host of the library: lists an encoding and keeps the text for itself.

#include <zxqtlv.h>

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <string>

static std::string captured;

static int capture(zxqtlv::ZxqGlobal*, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    char text[1 << 17];  // more than the tool prints at once
    const int size = std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    captured += text;
    return size;
}

int main() {
    std::uint8_t octets[] = {0x02, 0x01, 0x05};
    zxqtlv::EncodedBuffer buffer{sizeof octets, octets};
    zxqtlv::ZxqGlobal context{};
    zxqtlv::zxqinit(&context, &zxqtlv::toolTable());
    context.printHook = &capture;
    zxqtlv::printLayout(context, zxqtlv::TlvFormat::Decomposed, buffer);
    zxqtlv::zxqterm(&context);
    std::printf("captured: %s\n", captured.c_str() + 1);
}
