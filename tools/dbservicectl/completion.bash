# bash completion of dbservicectl: commands and options are what its own help tells.

_dbservicectl() {
    local cur prev words cword
    _init_completion -n : || return
    case $prev in
        --password-file | --from-password-file | --to-password-file) _filedir && return ;;
        --format) mapfile -t COMPREPLY < <(compgen -W "table json csv" -- "$cur") && return ;;
        --host | --from | --to)
            if [[ $cur == sqlite:* ]]; then
                mapfile -t COMPREPLY < <(compgen -d -P sqlite: -- "${cur#sqlite:}")
                compopt -o nospace
            else
                _known_hosts_real -- "$cur"
                COMPREPLY+=(sqlite:)
            fi
            __ltrim_colon_completions "$cur"
            return
            ;;
    esac

    # The commands given so far, each one of those that the help of those before it names.
    local path=() word help subcommands
    help=$("$1" --help 2>/dev/null)
    for word in "${words[@]:1:cword-1}"; do
        subcommands=$(_dbservicectl_commands <<<"$help")
        [[ " $subcommands " == *" $word "* ]] || continue
        path+=("$word")
        help=$("$1" "${path[@]}" --help 2>/dev/null)
    done
    subcommands=$(_dbservicectl_commands <<<"$help")
    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(grep -oE -- '^ +-[^ ]*' <<<"$help
$("$1" --help 2>/dev/null)" | grep -oE -- '--[a-z-]+')" -- "$cur")
    elif [[ -n $subcommands ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$subcommands" -- "$cur")
    elif [[ ${path[*]} == list ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$("$1" list --kinds)" -- "$cur")
    else
        _filedir
    fi
}

_dbservicectl_commands() {
    awk '/^[A-Z]/ { on = /^Subcommands:/ } on && /^  [a-z]/ { printf "%s ", $1 }'
}

complete -F _dbservicectl dbservicectl
