#!/usr/bin/env bash
# exports.sh LIBRARY: the library exports names of the project's own namespaces only.
set -euo pipefail

library=$1

# Of names such as std::hash<dependency::X>::f the outermost decides.
own='^_Z(T[VTISC]|G[VR]|T[hvc][n0-9_]*)?Z?N[KVrRO]*(10dependency|11comparisons|2fl|10foundation|10depcompare|6tessel)'
symbols=$(nm --dynamic --defined-only --format=posix "$library" | cut -d ' ' -f 1 | sed 's/@.*//')
status=0

if others=$(grep -vE "$own" <<<"$symbols"); then
    printf 'exported and not of the project: %s\n' "$(c++filt <<<"$others")"
    status=1
fi
exit "$status"
