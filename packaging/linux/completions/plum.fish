# Completion of plum's arguments for fish.
complete -c plum -f
complete -c plum -a '(__fish_complete_suffix .wf)'
@fish@
