# Completion of @name@'s commands and their options for fish.
complete -c @name@ -n __fish_use_subcommand -a '@words@'
@commands_fish@
