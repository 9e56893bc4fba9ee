#!/usr/bin/env bash
# search_paths.sh FOLDER: every program and library below the folder looks for libraries at places
# relative to itself, and nowhere else. An empty place would be the working folder.
set -euo pipefail
shopt -s nullglob

status=0
count=0
while IFS= read -r -d '' file; do
    header=$(head -c 4 "$file" | tr -d '\0')
    [[ $header == $'\x7fELF' ]] || continue
    count=$((count + 1))
    while read -r paths; do
        # shellcheck disable=SC2016 # the loader's word
        [[ $paths =~ ^\[('$ORIGIN'(/[^:]+)?)(:'$ORIGIN'(/[^:]+)?)*\]$ ]] || {
            printf '%s looks for libraries in %s\n' "$file" "$paths"
            status=1
        }
    done < <(readelf --dynamic --wide "$file" | grep -oP '\((RUN|R)PATH\).*\K\[.*\]$' || true)
done < <(find "$1/bin" "$1/lib"* "$1/tests"* -maxdepth 2 -type f \( -perm -u+x -o -name '*.so*' \) -print0)
[[ $count -gt 0 ]] || { echo "no program or library below $1"; exit 1; }
exit "$status"
