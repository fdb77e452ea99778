#!/usr/bin/env bash
# Checks what completions/ offers: for bash by completing command lines, for zsh by what it tells
# zsh's own functions.
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

# expect_zsh NAME "OFFERS, SORTED, JOINED BY |" FUNCTION PREFIX: zsh calls FUNCTION for a word that
# starts with PREFIX; what it passes to these functions is what is offered.
expect_zsh() {
    local offered
    offered=$(PREFIX=$4 zsh -f -c '
        _arguments() { print -l -- ${${(M)@:#*-[a-z]##\[*}/(#b)*(-[a-z]##)\[*/$match[1]} }
        _describe() { print -l -- ${${(P)${@[-1]}}%%:*} }
        compadd() { print -l -- ${(P)${@[-1]}} }
        _message() { print -- $1 }
        _files() { print files }
        setopt extended_glob
        . $0 >$1
        if [[ -n $2 ]]; then $2; else cat $1; fi' \
        "$root/completions/_zxqtlv" "$folder/options" "$3" | LC_ALL=C sort -u)
    if [ -n "$4" ] && [ "$3" = _zxqtlv_bytes ]; then
        offered=$(grep -i "^$4" <<<"$offered")
    fi
    offered=$(paste -sd '|' <<<"$offered")
    if [ "$offered" = "$2" ]; then
        echo "ok zsh: $1"
    else
        echo "FAILED zsh: $1: offered '$offered', wanted '$2'"
        failures=$((failures + 1))
    fi
}

if command -v zsh >/dev/null; then
    expect_zsh 'all options' "$all" '' ''
    expect_zsh 'usual bytes' '0x00|0x20|0xFF' _zxqtlv_bytes ''
    expect_zsh 'decimal bytes' '25|250|251|252|253|254|255' _zxqtlv_bytes 25
    expect_zsh 'hexadecimal bytes' \
        '0xF0|0xF1|0xF2|0xF3|0xF4|0xF5|0xF6|0xF7|0xF8|0xF9|0xFA|0xFB|0xFC|0xFD|0xFE|0xFF' \
        _zxqtlv_bytes 0xf
    expect_zsh 'files' 'files' _zxqtlv_input cert
    expect_zsh 'a slice' 'offset[,number of octets]' _zxqtlv_input +4
else
    echo 'skipped zsh: it is not installed'
fi

[ "$failures" -eq 0 ]
