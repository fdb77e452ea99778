// The library's one public header: list an encoding from a program of one's own.
//
// For: hosts that initialise a context, load or point at an encoding, list it in a layout, and take
// the text from a print hook instead of standard output.
// Not for: the insides; whatever else stands in these headers may change.
//
//     int show(zxqtlv::ZxqGlobal*, const char* format, ...);   // gets each piece of text
//
//     zxqtlv::ZxqGlobal context{};
//     zxqtlv::zxqinit(&context, &zxqtlv::toolTable());
//     zxqtlv::kxSetMessageHook(&context, &zxqtlv::printMessage);
//     context.printHook = &show;
//     zxqtlv::EncodedBuffer buffer{length, octets};
//     zxqtlv::printLayout(context, zxqtlv::TlvFormat::Decomposed, buffer);
//     zxqtlv::zxqterm(&context);
#pragma once

#include "cli/layouts.h"
#include "cli/loader.h"
#include "cli/message_hook.h"
#include "cli/tool_table.h"
#include "contents/contents_text.h"
#include "contents/tag_text.h"
#include "runtime/context.h"
#include "runtime/flags.h"
#include "runtime/print.h"
#include "runtime/report.h"
#include "runtime/trap.h"
