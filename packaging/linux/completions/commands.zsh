#compdef @name@
# Completion of @name@'s commands and their options for zsh.
local table='@table@' line
if ((CURRENT == 2)); then
    compadd -- ${${(f)table}%% *}
else
    for line in ${(f)table}; do
        [[ ${line%% *} == ${words[2]} ]] && compadd -- ${=line#${line%% *}}
    done
fi
_files
