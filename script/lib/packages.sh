# shellcheck shell=bash
# Installs Debian packages for commands or files that are missing. Sourced by the other scripts.
# Quiet when nothing is missing.

missing_packages=()

# need_command COMMAND PACKAGE
need_command() {
    command -v "$1" >/dev/null 2>&1 || missing_packages+=("$2")
}

# need_file FILE PACKAGE
need_file() {
    [ -e "$1" ] || missing_packages+=("$2")
}

install_missing() {
    [ ${#missing_packages[@]} -eq 0 ] && return 0
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
        if ! command -v sudo >/dev/null 2>&1; then
            echo "As root, install: ${missing_packages[*]}" >&2
            return 1
        fi
    fi
    echo "Installing: ${missing_packages[*]}" >&2
    # A list of packages that is years old still names versions that are gone.
    "${as_root[@]}" apt-get update -qq >&2
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing_packages[@]}" >&2
    missing_packages=()
}

need_build_tools() {
    need_command g++ g++
    need_command cmake cmake
    need_command ninja ninja-build
}

# With the libraries of its sanitizers and fuzzers.
need_clang() {
    need_command clang++ clang
    need_file /usr/lib/llvm-14/lib/clang/14.0.6/lib/linux/libclang_rt.fuzzer-x86_64.a \
        libclang-rt-14-dev
}

need_test_tools() {
    need_build_tools
    need_command zsh zsh
    need_file /usr/include/gtest/gtest.h libgtest-dev
    need_command openssl openssl
    need_command dumpasn1 dumpasn1
    need_command unber asn1c
    need_command python3 python3
    need_command git git
    need_command less less
    need_file /etc/ssl/certs/ca-certificates.crt ca-certificates
}

# build PRESET [CMAKE OPTION...]: configures and builds, and prints only what went wrong.
build() {
    local preset=$1 log
    shift
    log=$(mktemp)
    if ! cmake --preset "$preset" "$@" >"$log" 2>&1 ||
        ! cmake --build --preset "$preset" -- --quiet >>"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
}
