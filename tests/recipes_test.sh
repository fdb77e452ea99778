#!/usr/bin/env bash
# Runs the recipes of docs/recipes.md as they stand there and compares what they print.
#
#     tests/recipes_test.sh PROGRAM
#
# Each recipe finds the input that it names; a listing is compared without the banner and the empty
# lines at its end. Prints a line for each recipe; one whose tools are missing is skipped.
set -euo pipefail

program=$(realpath "$1")
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
examples=$root/examples

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/bin" "$folder/home"
ln -s "$program" "$folder/bin/zxqtlv"
export PATH=$folder/bin:$PATH HOME=$folder/home LC_ALL=C
export GIT_CONFIG_NOSYSTEM=1 GIT_CONFIG_GLOBAL=$folder/home/.gitconfig GIT_PAGER=cat
unset GIT_DIR GIT_WORK_TREE GIT_INDEX_FILE LESS LESSOPEN LESSCLOSE
cd "$folder"

# The sh block number $2 under the heading $1.
recipe() {
    awk -v heading="## $1" -v wanted="$2" '
        /^## /   { here = $0 == heading }
        /^```/   { if (inside) exit
                   if (here && $0 == "```sh") inside = ++count == wanted
                   next }
        inside   { print; found = 1 }
        END      { exit !found }' "$root/docs/recipes.md"
}

run() {
    local text
    text=$(recipe "$1" "$2")
    bash -euo pipefail -c "$text"
}

# From a listing on standard input: all but the banner and the blanks at the ends of lines.
listing() {
    sed '1,3d; s/ *$//'
}

failures=0
check() {
    if [ "$2" = "$3" ]; then
        echo "ok $1"
    else
        echo "FAILED $1"
        diff <(printf '%s\n' "$2") <(printf '%s\n' "$3") || true
        failures=$((failures + 1))
    fi
}

# skip NAME TOOL: whether the recipe must be left out since the tool is missing.
skip() {
    ! command -v "$2" >/dev/null || return 1
    echo "skipped $1: no $2"
}

certificate=$(zxqtlv -decomposed "$examples/certificate.ber" | listing)
case $certificate in
    *'  0:d= 1 hl=4 l= 866 cons: SEQUENCE'*'OBJECT IDENTIFIER:1 2 840 113549 1 1 11'*) ;;
    *) echo "FAILED: the program does not list the certificate"; exit 1 ;;
esac
{
    echo '-----BEGIN CERTIFICATE-----'
    base64 -w 64 "$examples/certificate.ber"
    echo '-----END CERTIFICATE-----'
} > one.pem
{
    echo 'Subject: example.com'
    cat one.pem
    echo '-----BEGIN OTHER-----'
    base64 -w 64 "$examples/pasted.ber"
    echo '-----END OTHER-----'
} > two.pem

name='PEM file'
if ! skip "$name" openssl; then
    cp one.pem certificate.pem
    check "$name" "$certificate" "$(run 'A PEM file' 1 | listing)"
fi
cp two.pem certificate.pem
check 'PEM file without OpenSSL' "$certificate" "$(run 'A PEM file' 2 | listing)"

heading='One certificate out of a saved TLS handshake'
cp "$examples/tls-handshake.bin" .
handshake=$(run "$heading" 1 | listing)
check 'TLS handshake, its head' \
    '  0:d= 1 hl=4 l= 447 cons: SEQUENCE
  4:d= 2 hl=4 l= 357 cons: SEQUENCE
  8:d= 3 hl=2 l=   3 cons: [0]
 10:d= 4 hl=2 l=   1 prim: INTEGER          :2 (0x02)' \
    "$(sed -n 2,5p <<< "$handshake")"
bash -euo pipefail -c "$(recipe "$heading" 1)
$(recipe "$heading" 2)" > /dev/null
check 'TLS handshake, all of it' "$handshake" "$(zxqtlv -decomposed server.der | listing)"
name='TLS handshake, certificate as a file'
if ! skip "$name" openssl; then
    check "$name" 'subject=C = XX, O = Example, CN = example.org' \
        "$(openssl x509 -inform DER -in server.der -noout -subject -nameopt oneline)"
fi

record=$(zxqtlv -decomposed "$examples/two-records.ber" +0,39 | listing)
check 'a record' ' 30:d= 2 hl=3 l=   6 prim: [32]             :63656C6C2D31' \
    "$(sed -n 7p <<< "$record")"
truncate -s 4194304 records.ber
cat "$examples/two-records.ber" >> records.ber
truncate -s 3000000000 records.ber
cat "$examples/two-records.ber" >> records.ber
check 'slice of a big file' "$record" "$(run 'A slice of a big file' 1 | listing)"
check 'slice beyond 2 GiB' "$record" "$(run 'A slice of a big file' 2 | listing)"
rm records.ber

heading='Hexadecimal pasted from a log'
pasted='
  0:d= 1 hl=2 l=  22 cons: SEQUENCE
  2:d= 2 hl=2 l=   1 prim: INTEGER          :5 (0x05)
  5:d= 2 hl=2 l=  17 prim: UTF8String       :pasted from a log'
digits=$(cat "$examples/pasted.hex")
echo "2026-06-15 12:30:45 sent 24 octets: $digits" > prefix.log
check 'log with a prefix' "$pasted" "$(run "$heading" 1 | listing)"
echo "${digits// /:}" > separated.log
check 'digits with colons' "$pasted" "$(run "$heading" 2 | listing)"
echo "0x${digits// /, 0x}" > separated.log
check 'digits behind 0x' "$pasted" "$(run "$heading" 2 | listing)"
od -A x -t x1z "$examples/pasted.ber" > dump.log
check 'dump of od' "$pasted" "$(run "$heading" 3 | listing)"
cat > dump.log << 'END'
00000000  30 16 02 01 05 0c 11 70  61 73 74 65 64 20 66 72  |0......pasted fr|
00000010  6f 6d 20 61 20 6c 6f 67                           |om a log|
00000018
END
check 'dump of hexdump' "$pasted" "$(run "$heading" 3 | listing)"
cat > dump.log << 'END'
00000000: 3016 0201 050c 1170 6173 7465 6420 6672  0......pasted fr
00000010: 6f6d 2061 206c 6f67                      om a log
END
check 'dump of xxd' "$pasted" "$(run "$heading" 4 | listing)"
sed -i 's/^0000\(.*:\) /\t0x\1  /' dump.log
check 'dump of tcpdump' "$pasted" "$(run "$heading" 4 | listing)"

heading='Encodings in git diff'
name='git diff'
if ! skip "$name" git; then
    mkdir repository
    cd repository
    git init -q .
    run "$heading" 1
    cp "$examples/pasted.ber" a.ber
    cp "$examples/cut-header.ber" damaged.ber
    git add .
    { head -c 4 "$examples/pasted.ber"; printf '\006'; tail -c +6 "$examples/pasted.ber"; } > a.ber
    check "$name" "$(awk '/^```diff/ { on = 1; next } /^```/ { on = 0 } on' "$root/docs/recipes.md")" \
        "$(git diff a.ber | sed -n 's/ *$//; /^[-+ ]d=/p')"
    printf '\005\000' >> damaged.ber
    check 'git diff of a damaged header' '-d= 1 hl=4 l= ???' \
        "$(git diff damaged.ber | sed -n 's/ *$//; /^-d=/p')"
    cd "$folder"
fi

name='less'
if ! skip "$name" less; then
    cp "$examples/certificate.ber" .
    echo 'no encoding' > other.txt
    shown=$(recipe 'Encodings in less' 1)
    check "$name" "$certificate" "$(bash -euo pipefail -c "$shown
        less certificate.ber | cat" | listing)"
    check 'less, other files' 'no encoding' "$(bash -euo pipefail -c "$shown
        less other.txt | cat")"
    check 'less -L' "$(md5sum < certificate.ber)" "$(bash -euo pipefail -c "$shown
        less -L -f certificate.ber | md5sum")"
fi

[ "$failures" -eq 0 ]
