# shellcheck shell=bash
_velmo() {
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "toggle toggle-all panel settings quit --help --version" -- "${COMP_WORDS[1]}")
    fi
}
complete -F _velmo velmo
