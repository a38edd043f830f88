#compdef plum
# Completion of plum's arguments for zsh.
_arguments @options@ '1:script:_files -g "*.wf"'
