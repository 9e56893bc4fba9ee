#!/usr/bin/env bash
# Runs the terminal examples of a document and compares what they print with what it says.
# usage: check.sh DOCUMENT PROGRAM-FOLDER WORKING-FOLDER
#
# An example is a block that begins with ```console; in it, a line "$ COMMAND" is followed by the
# output of the command.
set -euo pipefail
document=$(realpath "$1")
PATH=$(realpath "$2"):$PATH
cd "$3"

printed() {
    local line block=0
    while IFS= read -r line; do
        case $line in
            '```console') block=1 ;;
            '```') block=0 ;;
            '$ '*)
                [[ $block -eq 0 ]] || {
                    printf '%s\n' "$line"
                    LC_ALL=C bash -c "${line#'$ '}" 2>&1 || true
                }
                ;;
        esac
    done <"$document"
}

said() {
    awk '/^```console$/ { on = 1; next } /^```$/ { on = 0; next } on' "$document"
}

examples=$(printed)
[[ -n $examples ]] || { echo "$1: no example found" >&2; exit 1; }
diff <(said) <(printf '%s\n' "$examples") || {
    echo "$1: what it says (<) is not what the program prints (>)" >&2
    exit 1
}
echo "$1: $(grep -c '^\$ ' <<<"$examples") examples hold"
