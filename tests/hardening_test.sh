#!/usr/bin/env bash
# Reads the program and checks that it was hardened: a position-independent executable, nothing
# relocated after the start, no executable stack, and compiled with the protections.
#
#     tests/hardening_test.sh PROGRAM
set -euo pipefail

program=$1
headers=$(readelf --wide --file-header --segments --dynamic "$program")
symbols=$(nm --dynamic "$program")
entry=$(objdump --disassemble=main "$program")
failed=0

# expect WHAT TEXT PATTERN
expect() {
    if ! grep -Eq -- "$3" <<<"$2"; then
        echo "missing: $1"
        failed=1
    fi
}

expect 'position-independent executable' "$headers" 'FLAGS_1.* PIE'
expect 'relocations are read-only' "$headers" 'GNU_RELRO'
expect 'all relocations at the start' "$headers" 'BIND_NOW'
expect 'a stack that is not executable' "$headers" 'GNU_STACK .* RW +0x'
expect 'stack protector' "$symbols" '__stack_chk_fail'
expect 'fortified library calls' "$symbols" '__vfprintf_chk'
if [ "$(uname -m)" = x86_64 ]; then
    expect 'marked branch targets' "$entry" 'endbr64'
fi
if grep -E 'LOAD .* RWE ' <<<"$headers"; then
    echo "a segment can be written and executed"
    failed=1
fi
exit $failed
