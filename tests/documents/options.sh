#!/usr/bin/env bash
# Compares the options that the manual, docs/report.md and the completions name with --help-all.
# usage: options.sh PROGRAM SOURCE-FOLDER
# shellcheck disable=SC2016,SC2317  # other shells expand; functions are called by the name of a shell
set -euo pipefail
program=$(realpath "$1")
cd "$2"
# "-f, --format text|json": how the list of options begins its lines; a description may follow.
usages=$("$program" --help-all | sed -nE 's/^ {2,6}(-[^ ].*)/\1/p' | sed -E 's/  .*//')
names=$(grep -oE -- '(^|, )--?[a-z-]+' <<<"$usages" | sed 's/^, //')
# "--option a b c", for options that take one of a few values
choices=$(sed -nE 's/^(-[a-z], )?(--[a-z-]+) ([a-z-]+(\|[a-z-]+)*)$/\2 \3/p' <<<"$usages" | tr '|' ' ')
[[ $(wc -l <<<"$names") -ge 25 && $(wc -l <<<"$choices") -ge 6 ]]
# "--option  its description", without what the list adds of repetition and default
described=$("$program" --help-all | sed -nE '/^ {2,6}-/ {
    /-.*  /!{ N; s/\n +/  /; }
    s/^ +(-[a-z], )?(--[a-z-]+)( [^ ]+)?( [A-Z])? +/\2  /; s/ \[[^]]*\]$//; s/; may be repeated$//; p; }')
failed=0

# same NAME EXPECTED GOT: sets of lines, told apart
same() {
    diff <(sort -u <<<"$2") <(sort -u <<<"$3") >&2 || {
        echo "$1: not as in --help-all (<)" >&2
        failed=1
    }
}

same manual "$usages" "$(grep -E '^\*-' docs/depcompare.1.scd | sed 's/++$//' | tr -d '*_')"
same docs/report.md "$usages" "$(sed -nE 's/\\\|/|/g; s/^\| `(-[^`]*)` .*/\1/p' docs/report.md)"

# offers LINE: what the shell offers for the last word
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
same "fish, described" "$described" \
    "$(sed -nE "s/.* -l ([a-z-]+).* -d '(.*)'$/--\1  \2/p" share/completions/depcompare.fish)"
zsh=$(sed -nE "s/^    '(.*)' \\\\$/\1/p" share/completions/_depcompare | grep -v '^:' | sed -E 's/^\([^)]*\)//')
same zsh "$names" "$(sed -E 's/\[.*//' <<<"$zsh" | grep -oE -- '--?[a-z][a-z-]*')"
same "zsh, described" "$described" "$(sed -nE 's/^[^[]*(--[a-z-]+)[^[]*\[([^]]*)\].*/\1  \2/p' <<<"$zsh")"
while read -r option values; do
    same "zsh $option" "$values" "$(grep -E -- "$option(\}')?\[" <<<"$zsh" | sed -E 's/.*:\(([^)]*)\)$/\1/')"
done <<<"$choices"

# The number in CMakeLists.txt has an entry in the list of changes, and a report the version of its schema.
diff <(sed -nE '0,/^## /s/^## ([0-9.]+).*/depcompare \1/p' CHANGELOG.md
    jq -r '"JSON report: version \(.properties.version.const)"' docs/report.schema.json) \
    <("$program" --version) >&2 || {
    echo "CHANGELOG.md or docs/report.schema.json (<): not as in --version (>)" >&2
    failed=1
}

for shell in zsh fish; do
    command -v $shell >/dev/null || echo "not checked with $shell: it is not installed"
done
! command -v zsh >/dev/null || zsh -n share/completions/_depcompare
! command -v fish >/dev/null || completes fish
exit $failed
