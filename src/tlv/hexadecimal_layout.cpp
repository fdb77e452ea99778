#include "tlv/hexadecimal_layout.h"

#include "runtime/flags.h"
#include "runtime/print.h"
#include "runtime/runtime_private.h"
#include "tlv/hexadecimal_line.h"
#include "tlv/record_walk.h"

namespace zxqtlv {
namespace {

// The buffer in the context for as long as it is walked.
class RegisteredBuffer {
  public:
    RegisteredBuffer(ZxqGlobal& context, const EncodedBuffer& buffer)
        : context_(context), record_{buffer.length, buffer.octets} {
        if ((context_.flags & TrapEnabled) != 0) {
            context_.runtimePrivate->currentBuffer = &record_;
        }
    }
    ~RegisteredBuffer() { context_.runtimePrivate->currentBuffer = nullptr; }
    RegisteredBuffer(const RegisteredBuffer&) = delete;
    RegisteredBuffer& operator=(const RegisteredBuffer&) = delete;

  private:
    ZxqGlobal& context_;
    const CurrentBuffer record_;
};

}  // namespace

void printHexadecimal(ZxqGlobal& context, EncodedBuffer& buffer) {
    const RegisteredBuffer registered(context, buffer);
    const std::int32_t left = walkRecords(context, buffer, &printHexadecimalLine);
    // What a repair could not walk does not go into the repaired encoding.
    if ((context.flags & FixEncoding) != 0 && context.runtimePrivate->fixupCount == 0) {
        buffer.length -= left;
    }
    printBlock(context).handOver();
}

}  // namespace zxqtlv
