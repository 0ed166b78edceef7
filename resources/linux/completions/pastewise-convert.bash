_pastewise_convert() {
    local current=$2 previous=$3
    if [[ $current == -* && $previous != -o && $previous != --output ]]; then
        mapfile -t COMPREPLY < <(compgen -W '-p --plain -c --count -j --json -0 --null -o --output
            -h --help -V --version' -- "$current")
    fi
}
complete -o default -F _pastewise_convert pastewise-convert
