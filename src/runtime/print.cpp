#include "runtime/print.h"

#include <cstdio>
#include <cstring>

#include "runtime/argument_words.h"
#include "runtime/runtime_private.h"

namespace zxqtlv {
namespace {

// The text of one print call, for whichever of the ways out is in force.
std::int32_t dispatch(ZxqGlobal* context, const char* format, std::va_list arguments) {
    if (context == nullptr) {
        return zxqvprint(nullptr, format, arguments);
    }
    if (context->controlTable != nullptr) {
        if (context->runtimePrivate->vprintHook != nullptr) {
            return context->runtimePrivate->vprintHook(context, format, arguments);
        }
        if (context->printHook != nullptr) {
            const ArgumentWords w = takeArgumentWords(format, arguments);
            return context->printHook(context, format, w[0], w[1], w[2], w[3], w[4], w[5], w[6],
                                      w[7]);
        }
    }
    if (context->printFunction == nullptr || context->printFunction == &std::fprintf) {
        return zxqvprint(context, format, arguments);
    }
    if (context->outputStream == nullptr) {
        return 0;
    }
    const ArgumentWords w = takeArgumentWords(format, arguments);
    return context->printFunction(context->outputStream, format, w[0], w[1], w[2], w[3], w[4], w[5],
                                  w[6], w[7]);
}

// What `vfprintf` does for "%s", all but the formatting.
int printText(std::FILE* stream, std::va_list arguments) {
    const char* const text = va_arg(arguments, const char*);
    const std::size_t size = std::strlen(text);
    return std::fwrite(text, 1, size, stream) == size ? static_cast<int>(size) : -1;
}

void handOverBlock(ZxqGlobal& context) {
    if (context.runtimePrivate != nullptr) {
        context.runtimePrivate->printBlock.handOver();
    }
}

}  // namespace

std::int32_t zxqprint(ZxqGlobal* context, const char* format, ...) {
    if (context != nullptr) {
        handOverBlock(*context);
    }
    std::va_list arguments;
    va_start(arguments, format);
    const std::int32_t result = dispatch(context, format, arguments);
    va_end(arguments);
    return result;
}

std::int32_t zxqvprint(ZxqGlobal* context, const char* format, std::va_list arguments) {
    std::FILE* const stream = context == nullptr ? stdout : context->outputStream;
    if (stream == nullptr) {
        return 0;
    }
    // A block of text needs no formatting, and goes to an unbuffered stream in one piece.
    const bool plain = std::strcmp(format, "%s") == 0;
    const int printed =
        plain ? printText(stream, arguments) : std::vfprintf(stream, format, arguments);
    const bool flushed = std::fflush(stream) == 0;
    if ((printed < 0 || !flushed) && context != nullptr && context->runtimePrivate != nullptr) {
        context->runtimePrivate->writeFailed = true;
    }
    return printed;
}

PrintBlock& printBlock(ZxqGlobal& context) {
    return context.runtimePrivate->printBlock;
}

std::int32_t zxqOpenTraceFile(ZxqGlobal* context, const char* fileName) {
    if (context == nullptr) {
        return kNullArgument;
    }
    if (context->savedOutputStream != nullptr) {
        return kTraceFileAlreadyOpen;
    }
    handOverBlock(*context);
    std::FILE* const file = std::fopen(fileName, "wt");
    if (file == nullptr) {
        return kCannotOpenTraceFile;
    }
    // Each print is flushed, so a buffer would only cut it into several writes.
    std::setvbuf(file, nullptr, _IONBF, 0);
    context->savedOutputStream = context->outputStream;
    context->outputStream = file;
    return kSuccess;
}

std::int32_t zxqCloseTraceFile(ZxqGlobal* context) {
    if (context == nullptr) {
        return kNullArgument;
    }
    handOverBlock(*context);
    if (context->savedOutputStream == nullptr) {
        return kSuccess;
    }
    // Flushed first: a stream whose `fclose` fails is gone all the same and could not stay in
    // force.
    if (context->outputStream != nullptr) {
        if (std::ferror(context->outputStream) != 0 || std::fflush(context->outputStream) != 0) {
            return kCannotCloseTraceFile;
        }
        std::FILE* const file = context->outputStream;
        context->outputStream = nullptr;
        if (std::fclose(file) != 0) {
            return kCannotCloseTraceFile;
        }
    }
    context->outputStream = context->savedOutputStream;
    context->savedOutputStream = nullptr;
    return kSuccess;
}

void dropTraceFile(ZxqGlobal& context) {
    handOverBlock(context);
    if (context.savedOutputStream == nullptr) {
        return;
    }
    if (context.outputStream != nullptr) {
        // Nothing is left to be told about a file that is given up.
        static_cast<void>(std::fclose(context.outputStream));
    }
    context.outputStream = context.savedOutputStream;
    context.savedOutputStream = nullptr;
}

bool printFailed(const ZxqGlobal& context) {
    return context.runtimePrivate != nullptr && context.runtimePrivate->writeFailed;
}

}  // namespace zxqtlv
