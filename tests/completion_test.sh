#!/usr/bin/env bash
# Checks what completions/ offers: for bash by completing command lines, for zsh that it parses.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=completions/zxqtlv.bash
. "$root/completions/zxqtlv.bash"

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
mkdir records
touch certificate.ber 'call records.ber' pasted.hex

failures=0

# expect NAME "OFFERS, SORTED, JOINED BY |" WORD... completes the last WORD behind the program's name.
expect() {
    local name=$1 wanted=$2 offered
    shift 2
    COMP_WORDS=(zxqtlv "$@")
    COMP_CWORD=$#
    _zxqtlv
    offered=$(printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort | paste -sd '|')
    if [ "$offered" = "$wanted" ]; then
        echo "ok $name"
    else
        echo "FAILED $name: offered '$offered', wanted '$wanted'"
        failures=$((failures + 1))
    fi
}

all='-binary|-decomposed|-help|-hexadecimal|-noaddition|-noshort|-notitles|-output|-pad|-syntax|-text'
files='call records.ber|certificate.ber|pasted.hex|records'

expect 'all options' "$all" -
expect 'one option' '-decomposed' -d
expect 'options that begin alike' '-noaddition|-noshort|-notitles' -no
expect 'capitals' '-help|-hexadecimal' -HE
expect 'no hidden option' '' -z
expect 'an option behind the input' '-syntax' certificate.ber -s
expect 'files' "$files" ''
expect 'the beginning of a file name' 'call records.ber|certificate.ber' c
expect 'no file' '' nothing
expect 'input of octets' "$files" -binary ''
expect 'input of digits, option cut short' 'pasted.hex' -t p
expect 'output in capitals' 'records' -OUT r
expect 'a file behind a layout' 'certificate.ber' -syntax ce
expect 'a file behind a flag' 'certificate.ber' -noshort ce
expect 'usual bytes' '0x00|0x20|0xFF' -pad ''
expect 'hexadecimal bytes' \
    '0xF0|0xF1|0xF2|0xF3|0xF4|0xF5|0xF6|0xF7|0xF8|0xF9|0xFA|0xFB|0xFC|0xFD|0xFE|0xFF' -pad 0xf
expect 'decimal bytes' '25|250|251|252|253|254|255' -p 25
expect 'no such byte' '' -pad 256
expect 'a slice' '' certificate.ber +4

registered=$(complete -p zxqtlv)
if [ "$registered" = 'complete -F _zxqtlv zxqtlv' ]; then
    echo 'ok registered'
else
    echo "FAILED registered: $registered"
    failures=$((failures + 1))
fi

if command -v zsh >/dev/null; then
    zsh -n "$root/completions/_zxqtlv"
    echo 'ok zsh'
else
    echo 'skipped zsh: it is not installed'
fi

[ "$failures" -eq 0 ]
