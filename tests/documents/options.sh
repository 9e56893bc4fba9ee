#!/usr/bin/env bash
# Holds what the manual and the completions offer against the program's own list of options.
# usage: options.sh PROGRAM SOURCE-FOLDER
# shellcheck disable=SC2016,SC2317  # other shells expand; functions are called by the name of a shell
set -euo pipefail
program=$(realpath "$1")
cd "$2"
help=$("$program" --help-all)
failed=0

# same NAME EXPECTED GOT: sets of words, told apart
same() {
    diff <(sort -u <<<"$2") <(sort -u <<<"$3") >&2 || {
        echo "$1: not the options that --help-all lists (<)" >&2
        failed=1
    }
}

names=$(sed -nE 's/^  ((-[a-z],)?--[a-z-]+).*/\1/p' <<<"$help" | tr , '\n')
# "--option a b c", for options that take one of a few values
choices=$(sed -nE 's/^  (-[a-z],)?(--[a-z-]+) ([a-z-]+(\|[a-z-]+)*)( .*|$)/\2 \3/p' <<<"$help" | tr '|' ' ')
[[ $(wc -l <<<"$names") -ge 25 && $(wc -l <<<"$choices") -ge 6 ]]

same manual "$names" "$(grep -E '^\*-' docs/depcompare.1.scd | grep -oE '\*--?[a-z-]+\*' | tr -d '*')"
same "choices of the manual" "$choices" "$(sed -nE 's/^(\*-[a-z]\*, )?\*(--[a-z-]+)\* ([a-z|-]+)$/\2 \3/p' \
    docs/depcompare.1.scd | tr '|' ' ')"
short_help=$("$program" --help)
same --help "$(grep -oE -- '--[a-z][a-z-]+' <<<"$short_help" | grep -Fx -e "$names")" \
    "$(grep -oE -- '--[a-z][a-z-]+' <<<"$short_help")"

# offers LINE: what bash offers for the last word
bash_offers() {
    bash --norc -c 'source share/completions/depcompare.bash
        compopt() { :; }
        read -ra COMP_WORDS <<<"$1"
        [[ $1 != *" " ]] || COMP_WORDS+=("")
        COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
        _depcompare
        printf "%s\n" "${COMPREPLY[@]}"' bash "$1"
}
fish_offers() {
    fish --no-config -c 'source share/completions/depcompare.fish; complete -C $argv[1]' "$1" | cut -f 1
}
# completes SHELL
completes() {
    local option values
    same "$1" "$(grep -E -- '^--' <<<"$names")" "$("$1_offers" 'depcompare --')"
    while read -r option values; do
        same "$1 $option" "${values// /$'\n'}" "$("$1_offers" "depcompare $option ")"
    done <<<"$choices"
}

completes bash
same "bash, all" "$names" "$(bash_offers 'depcompare -')"
same "bash, with =" $'markdown' "$(bash_offers 'depcompare --format = m')"
zsh_names=$(sed -n "s/^    '\(.*\)' \\\\\$/\1/p" share/completions/_depcompare |
    sed -E 's/\[.*//; s/^\([^)]*\)//' | grep -oE -- '--?[a-z][a-z-]*')
same zsh "$names" "$zsh_names"
while read -r option values; do
    grep -qF -- "$option" share/completions/_depcompare
    same "zsh $option" "$values" "$(grep -E -- "$option(\}')?\[" share/completions/_depcompare |
        sed -E 's/.*:\(([^)]*)\).*/\1/')"
done <<<"$choices"

for shell in zsh fish; do
    command -v $shell >/dev/null || echo "not checked with $shell: it is not installed"
done
! command -v zsh >/dev/null || zsh -n share/completions/_depcompare
! command -v fish >/dev/null || completes fish
exit $failed
