# bash completion for stackreel-cli
_stackreel_cli() {
    local cur prev words cword
    _init_completion -n : || return

    local command= word
    for word in "${words[@]:1:cword-1}"; do
        case $word in
            probe | export) command=$word; break ;;
        esac
    done
    case $prev in
        --aspect)
            COMPREPLY=($(compgen -W '9:16 4:5 1:1 Custom' -- "$cur"))
            __ltrim_colon_completions "$cur"
            return ;;
        --recipe | --like | --save-recipe)
            _filedir
            return ;;
        --into)
            _filedir -d
            return ;;
        --size | --top | --bottom | --from | --to | --audio-track)
            return ;;
    esac
    if [[ $cur == -* ]]; then
        local options='--help --version'
        case $command in
            probe) options='--json --help' ;;
            export) options='--aspect --size --top --bottom --from --to --recipe --like --save-recipe --no-audio
                --audio-track --into --overwrite --dry-run --json --quiet --help' ;;
        esac
        COMPREPLY=($(compgen -W "$options" -- "$cur"))
    elif [[ -z $command ]]; then
        COMPREPLY=($(compgen -W 'probe export' -- "$cur"))
    else
        _filedir
    fi
} && complete -F _stackreel_cli stackreel-cli
