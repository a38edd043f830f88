# Completion of @name@'s commands and their options for bash.
_@function@() {
    local word=${COMP_WORDS[COMP_CWORD]} words='' unwanted='' command options
    while read -r command options; do
        if ((COMP_CWORD == 1)); then
            words+=" $command"
        elif [[ $command == "${COMP_WORDS[1]}" ]]; then
            words=$options
        fi
    done <<<'@table@'
    [[ $word == -* ]] || unwanted='-*'
    mapfile -t COMPREPLY < <(compgen -W "$words" -X "$unwanted" -- "$word")
}
complete -o default -F _@function@ @name@
