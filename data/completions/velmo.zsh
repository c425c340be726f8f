#compdef velmo

_velmo() {
    local -a commands=(
        'toggle:show the hidden icons, or hide them'
        'toggle-all:show all icons, or hide them'
        'panel:open the panel of hidden icons, or close it'
        'settings:open the settings'
        'quit:end it, and return once it has gone'
        '--help:print a short help'
        '--version:print the version'
    )
    if ((CURRENT == 2)); then
        _describe command commands
    fi
}

_velmo "$@"
