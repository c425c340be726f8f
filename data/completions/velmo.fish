set -l first '__fish_is_nth_token 1'
complete -c velmo -f
complete -c velmo -n $first -a toggle -d 'show the hidden icons, or hide them'
complete -c velmo -n $first -a toggle-all -d 'show all icons, or hide them'
complete -c velmo -n $first -a panel -d 'open the panel of hidden icons, or close it'
complete -c velmo -n $first -a settings -d 'open the settings'
complete -c velmo -n $first -a quit -d 'end it, and return once it has gone'
complete -c velmo -n $first -l help -d 'print a short help'
complete -c velmo -n $first -l version -d 'print the version'
