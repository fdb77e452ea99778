# Completion of zxqtlv's command line for bash.
#
# Put it where bash-completion looks for it, as `zxqtlv`, for instance in
# ~/.local/share/bash-completion/completions/, or source it from ~/.bashrc.
# shellcheck shell=bash

# Whether the word $1 stands for the option $2, which may be cut short to $3 characters.
_zxqtlv_means() {
    local word=${1,,}
    [[ ${#word} -ge $3 && $2 == "$word"* ]]
}

_zxqtlv_files() {
    mapfile -t COMPREPLY < <(compgen -f -- "$1")
    # Has an effect only where a completion is under way.
    compopt -o filenames 2>/dev/null || true
}

# The padding bytes that are common where nothing is typed yet, else all that begin with it.
_zxqtlv_bytes() {
    local typed=${1,,} value byte
    if [[ -z $typed ]]; then
        COMPREPLY=(0x00 0x20 0xFF)
        return
    fi
    for ((value = 0; value < 256; ++value)); do
        printf -v byte '0x%02X' "$value"
        [[ ${byte,,} != "$typed"* ]] || COMPREPLY+=("$byte")
        [[ $value != "$typed"* ]] || COMPREPLY+=("$value")
    done
}

_zxqtlv() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()

    if ((COMP_CWORD > 1)); then
        if _zxqtlv_means "$previous" -binary 2 || _zxqtlv_means "$previous" -text 2 ||
            _zxqtlv_means "$previous" -output 2; then
            _zxqtlv_files "$current"
            return
        elif _zxqtlv_means "$previous" -pad 2; then
            _zxqtlv_bytes "$current"
            return
        fi
    fi
    case $current in
        -*)
            mapfile -t COMPREPLY < <(compgen -W "-binary -text -decomposed -hexadecimal -syntax \
                -output -notitles -noaddition -noshort -pad -help" -- "${current,,}")
            ;;
        +*) ;;
        *) _zxqtlv_files "$current" ;;
    esac
}

complete -F _zxqtlv zxqtlv
