#!/usr/bin/env bash
# tidy_units.sh BUILD-FOLDER: reads names of source files, one per line, and prints the object files
# whose making shows them to clang-tidy. A header is seen through a listed source that includes it;
# else a public header through the object that proves that it compiles alone, and another one through
# any source that includes it.
set -euo pipefail

# source <tab> object, by source
compiled=$(sed -n 's/^ *"command": ".* -o \([^ ]*\) -c \([^ ]*\)",\{0,1\}$/\2\t\1/p' \
    "$1/compile_commands.json")

# object_of SOURCE: the object of the first source whose name ends so; fails if there is none.
object_of() {
    local source object
    while IFS=$'\t' read -r source object; do
        if [[ -n $1 && $source == *"/${1#/}" ]]; then
            printf '%s\n' "$object"
            return
        fi
    done <<<"$compiled"
    return 1
}

# includer HEADER: reads names of sources and prints the first that includes the header, if any.
includer() {
    xargs -r -d '\n' grep -lsE "#include [\"<](.*/)?${1##*/}[\">]" | head -n 1
}

# object_for HEADER: the object of a source that includes it, directly or through one header.
object_for() {
    local source
    source=$(includer "$1" <<<"$known") || true
    [[ -n $source ]] || source=$(includer "$(find . -path ./build -prune -o -name '*.h' -print | includer "$1")" <<<"$known") || true
    object_of "$source"
}

known=$(cut -f 1 <<<"$compiled")
files=$(cat)
sources=$(grep '\.cpp$' <<<"$files" || true)
{
    while read -r source; do
        object_of "$source" || true
    done <<<"$sources"

    while read -r header; do
        if [[ -z $(includer "$header" <<<"$sources" || true) ]]; then
            object_of "${header##*include/}.cxx" || object_for "$header" || true
        fi
    done < <(grep '\.h$' <<<"$files" || true)
} | sort -u
