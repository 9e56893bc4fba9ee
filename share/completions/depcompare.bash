# Completion of depcompare's command line, for bash.
_depcompare() {
    local word=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]} choices=
    # Bash splits --option=value into three words.
    if [[ $word == = ]]; then
        word=
    elif [[ $option == = ]]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case $option in
        -f | --format) choices='text json html markdown summary csv tsv' ;;
        --color | --progress) choices='auto always never' ;;
        --filter) choices='nonstructural unchanged' ;;
        --fail-on) choices='any structural cycles none' ;;
        --insights) choices='off short full' ;;
        --input-format) choices='auto cyclonedx graphml spdx dependency-cruiser madge esbuild nx npm-ls package-lock cargo pipdeptree
                conan maven-json maven-tree gradle node-link jgf dot csv tsv list' ;;
        --convert) choices='csv jgf' ;;
        --node-id) choices='auto id name' ;;
        --report)
            choices='text= json= html= markdown= summary= csv= tsv= renames='
            compopt -o nospace
            ;;
        --locale | --file-type | --only | --exclude | --ignore-* | --id-replace | --max-* | --area* | \
            --link-type | --rename | --why) return ;;
        *)
            [[ $word == -* ]] || return
            choices='-f --format -o --output --report --max-bytes --raw --when-changed -q --quiet --locale
                --color --progress --no-pager --filter --no-filter --fail-on --insights --area-depth --area
                --area-separator --link-type --renames --rename --why --input-format --list-formats --node-id
                --file-type --allow-empty --only --exclude --ignore-property --ignore-component
                --keep-build-data --strip-prefix --strip-version --id-replace
                --max-input-bytes --max-nesting --max-nodes --max-edges
                --max-text-bytes --convert --textconv --git -h --help --help-all --version'
            ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word")
}
# If nothing is offered, files are.
complete -o default -F _depcompare depcompare
