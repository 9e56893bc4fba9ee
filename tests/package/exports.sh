#!/usr/bin/env bash
# exports.sh LIBRARY ALLOWED: the library exports, in the project's own namespaces, what the list
# names and nothing else. A name of the list stands for a function with its overloads, or for a class
# with its members; '#' opens a comment.
set -euo pipefail

library=$1
allowed=$(sed 's/ *#.*//; /^$/d' "$2")

# What std and Boost templates are instantiated with does not make them ours: the outermost name does.
own='^_Z(T[VTISC]|G[VR]|Th?n?[0-9]*_)?Z?N[KVrRO]*(10dependency|11comparisons|2fl|10foundation|10depcompare)'
exported=$(nm --dynamic --defined-only --format=posix "$library" | cut -d ' ' -f 1 |
    sed 's/@.*//' | grep -E "$own" | c++filt | sort -u)
status=0

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
