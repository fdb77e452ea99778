// A host of the library: lists an encoding and keeps the text for itself.

#include <zxqtlv.h>

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <string>

static std::string captured;

static int capture(zxqtlv::ZxqGlobal*, const char* format, ...) {
    std::va_list arguments;
    std::va_list again;
    va_start(arguments, format);
    va_copy(again, arguments);
    const int size = std::vsnprintf(nullptr, 0, format, arguments);
    std::string text(static_cast<std::size_t>(size) + 1, ' ');
    std::vsnprintf(text.data(), text.size(), format, again);
    captured.append(text, 0, static_cast<std::size_t>(size));
    va_end(again);
    va_end(arguments);
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
