#!/usr/bin/env bash
# elf_files.sh FOLDER [--hardened]: every program and library below the folder looks for libraries at
# places relative to itself, and nowhere else. An empty place would be the working folder. Hardened ones
# cannot have their tables of functions or their stack rewritten while they run.
set -euo pipefail
shopt -s nullglob

status=0
count=0
protected=0
complain() { printf '%s\n' "$*"; status=1; }

while IFS= read -r -d '' file; do
    header=$(head -c 4 "$file" | tr -d '\0')
    [[ $header == $'\x7fELF' ]] || continue
    count=$((count + 1))
    dynamic=$(readelf --dynamic --wide "$file")
    while read -r paths; do
        # shellcheck disable=SC2016 # the loader's word
        [[ $paths =~ ^\[('$ORIGIN'(/[^:]+)?)(:'$ORIGIN'(/[^:]+)?)*\]$ ]] ||
            complain "$file looks for libraries in $paths"
    done < <(grep -oP '\((RUN|R)PATH\).*\K\[.*\]$' <<<"$dynamic" || true)

    [[ ${2:-} == --hardened ]] || continue
    segments=$(readelf --segments --wide "$file")
    grep -q 'FLAGS.*NOW' <<<"$dynamic" || complain "$file finds functions while it runs"
    grep -q GNU_RELRO <<<"$segments" || complain "$file leaves tables of functions writable"
    grep -q 'GNU_STACK.* RW ' <<<"$segments" || complain "$file has a stack that can be executed"
    [[ $(readelf --dyn-syms --wide "$file") != *__stack_chk_fail* ]] || protected=$((protected + 1))
done < <(find "$1/bin" "$1/lib"* "$1/tests"* -maxdepth 2 -type f \( -perm -u+x -o -name '*.so*' \) -print0)
[[ $count -gt 0 ]] || { echo "no program or library below $1"; exit 1; }
[[ ${2:-} != --hardened || $((2 * protected)) -gt $count ]] ||
    complain "of $count programs and libraries $protected guard their stack"
exit "$status"
