# bash completion for ravelinth

_ravelinth() {
    local cur prev words cword
    _init_completion || return

    local commands='scan disk trash restore reveal'
    if [[ $cword -eq 1 ]]; then
        COMPREPLY=($(compgen -W "$commands --help --version" -- "$cur"))
        return
    fi

    local options
    case ${words[1]} in
    scan)
        if [[ $prev == --min-size-mb ]]; then
            COMPREPLY=($(compgen -W '10 100 500 1000' -- "$cur"))
            return
        fi
        if [[ $prev == --exclude ]]; then
            COMPREPLY=($(compgen -d -- "$cur"))
            return
        fi
        options='--min-size-mb --hidden --exclude --one-file-system -x --network --binary --json --csv --print0 --help'
        ;;
    disk) options='--binary --json --help' ;;
    trash) options='--json --help' ;;
    restore) options='--last --json --help' ;;
    reveal) options='--help' ;;
    *) return ;;
    esac

    if [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$cur"))
    elif [[ ${words[1]} == scan ]]; then
        _filedir -d
    elif [[ ${words[1]} != disk ]]; then
        _filedir
    fi
} &&
    complete -F _ravelinth ravelinth
