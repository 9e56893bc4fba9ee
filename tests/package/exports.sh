#!/usr/bin/env bash
# exports.sh LIBRARY [ALLOWED]: the library exports names of the project's own namespaces only, and if
# there is a list, what that names and nothing else. A name in the list is that of a function with its
# overloads, or of a class with its members; '#' opens a comment.
set -euo pipefail

library=$1

# Of names such as std::hash<dependency::X>::f the outermost decides.
own='^_Z(T[VTISC]|G[VR]|T[hvc][n0-9_]*)?Z?N[KVrRO]*(10dependency|11comparisons|2fl|10foundation|10depcompare|6tessel)'
symbols=$(nm --dynamic --defined-only --format=posix "$library" | cut -d ' ' -f 1 | sed 's/@.*//')
exported=$(grep -E "$own" <<<"$symbols" | c++filt | sort -u)
status=0

if others=$(grep -vE "$own" <<<"$symbols"); then
    printf 'exported and not of the project: %s\n' "$(c++filt <<<"$others")"
    status=1
fi
[[ $# -gt 1 ]] || exit "$status"
allowed=$(sed 's/ *#.*//; /^$/d' "$2")

while read -r symbol; do
    entity=$symbol
    for prefix in 'vtable for ' 'typeinfo for ' 'typeinfo name for ' 'guard variable for '; do
        entity=${entity#"$prefix"}
    done
    found=no
    while read -r entry; do
        [[ $entity == "$entry" || $entity == "$entry"[:\(\[]* ]] && found=yes
    done <<<"$allowed"
    if [[ $found == no ]]; then
        printf 'exported and not in the list: %s\n' "$symbol"
        status=1
    fi
done <<<"$exported"

while read -r entry; do
    if [[ -n $entry ]] && ! grep -qF -- "$entry" <<<"$exported"; then
        printf 'in the list and not exported: %s\n' "$entry"
        status=1
    fi
done <<<"$allowed"
exit "$status"
