# Completion of the ampwell command: its commands and options, the setting keys, the installed
# themes and the saved profiles (the last three asked of ampwell itself, in the root the line
# names with --root).

_ampwell_root_args()
{
    local i
    for ((i = 1; i < cword; i++)); do
        if [[ ${words[i]} == --root ]]; then
            printf -- '--root\n%s\n' "${words[i + 1]}"
            return
        fi
    done
}

_ampwell_list()
{
    local -a root
    mapfile -t root < <(_ampwell_root_args)
    case $1 in
        keys) ampwell "${root[@]}" settings 2>/dev/null | awk '{ print $1 }' ;;
        themes) ampwell "${root[@]}" themes 2>/dev/null | cut -f1 ;;
        profiles) ampwell "${root[@]}" profile list 2>/dev/null | cut -f1 ;;
    esac
}

# Offers the words (one a line) that begin with what is typed; names with blanks ("Amp Connect")
# come quoted, so that they stay one word.
_ampwell_words()
{
    local IFS=$'\n' word typed=$cur
    # What was typed, as the shell reads it ("Amp\ Co" is "Amp Co").
    if declare -F dequote >/dev/null; then
        typed=$(dequote "$cur")
    fi
    local -a matches=($(compgen -W "$1" -- "$typed"))
    COMPREPLY=()
    for word in "${matches[@]}"; do
        COMPREPLY+=("$(printf '%q' "$word")")
    done
}

_ampwell()
{
    local cur prev words cword
    _init_completion || return

    if [[ $prev == --root ]]; then
        _filedir -d
        return
    fi

    local command="" i
    for ((i = 1; i < cword; i++)); do
        case ${words[i]} in
            --root) ((i++)) ;;
            -*) ;;
            *) command=${words[i]}; break ;;
        esac
    done

    case $command in
        "")
            _ampwell_words $'get\nset\nsettings\nprofile\nrender\nthemes\nwatch\n--root\n--help\n--version' ;;
        get|set)
            if [[ $prev == "$command" ]]; then
                _ampwell_words "$(_ampwell_list keys)"
            elif [[ $command == set && $cur == -* ]]; then
                _ampwell_words $'--type\n--help'
            elif [[ $prev == --type ]]; then
                _ampwell_words $'string\nbool\nint\nreal'
            fi ;;
        settings|themes)
            _ampwell_words $'--json\n--help' ;;
        watch)
            _ampwell_words $'--count\n--help' ;;
        profile)
            local action=${words[i + 1]}
            if ((cword == i + 1)); then
                _ampwell_words $'list\nsave\nrestore\ndelete'
            elif [[ $cur == -* ]]; then
                case $action in
                    list) _ampwell_words $'--json' ;;
                    save) _ampwell_words $'--complete\n--colors' ;;
                    restore) _ampwell_words $'--colors-only\n--reset-others' ;;
                esac
            elif ((cword == i + 2)) && [[ $action == restore || $action == delete ]]; then
                _ampwell_words "$(_ampwell_list profiles)"
            fi ;;
        render)
            case $prev in
                --theme) _ampwell_words "$(_ampwell_list themes)" ;;
                --script|-o) _filedir ;;
                --style) _ampwell_words $'light\ndark' ;;
                *) _ampwell_words $'--theme\n--script\n--builtin\n--settings\n--sheet\n--style\n--height\n--scale\n--level\n--charging\n--low\n--lpm\n--color\n--base-color\n--flip-x\n--flip-y\n--time-limit\n-o\n--help' ;;
            esac ;;
    esac
}

complete -F _ampwell ampwell
