# Completion of plum's arguments for bash.
_plum() {
    local word=${COMP_WORDS[COMP_CWORD]}
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '@options@' -- "$word")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -X '!*.wf' -- "$word"; compgen -d -- "$word")
    fi
}
complete -F _plum plum
