# bash completion for pxmenu: commands, options, the tags of the menu for the selection typed so
# far (asked from `pxmenu menu --json`), and the names of the configuration's lists, entries and
# preferences (asked from `pxmenu config list`).

# Offers the lines of standard input that start with the word being typed, quoted for the shell.
# (Fed by a process substitution: in a pipeline it would fill a copy of COMPREPLY.)
_pxmenu_reply_lines() {
    local typed=$1 line
    COMPREPLY=()
    while IFS= read -r line; do
        [[ -n $line && $line == "$typed"* ]] && COMPREPLY+=("$(printf '%q' "$line")")
    done
}

# The word as the command will receive it: quotes and backslashes removed, a leading ~/ made the
# home folder. Nothing in the word is run.
_pxmenu_unquoted() {
    local word=$1 out= quote= c i
    for ((i = 0; i < ${#word}; i++)); do
        c=${word:i:1}
        if [[ $quote == "'" ]]; then
            [[ $c == "'" ]] && quote= || out+=$c
        elif [[ $c == '\' ]]; then
            ((++i))
            out+=${word:i:1}
        elif [[ $quote == '"' ]]; then
            [[ $c == '"' ]] && quote= || out+=$c
        elif [[ $c == "'" || $c == '"' ]]; then
            quote=$c
        else
            out+=$c
        fi
    done
    [[ $word == "~/"* ]] && out=$HOME/${out:2}
    printf '%s' "$out"
}

# The tags of the menu that `run` would build: the menu kind, the folder shown and the selection
# (the words after --, or the other plain words) are taken from the whole command line.
_pxmenu_tags() {
    local program=$1 i word kind= target= after=
    local -a paths=()
    for ((i = 2; i < ${#words[@]}; i++)); do
        ((i == cword)) && continue
        word=$(_pxmenu_unquoted "${words[i]}")
        if [[ -n $after ]]; then
            paths+=("$word")
            continue
        fi
        case $word in
            --) after=1 ;;
            --kind) kind=$(_pxmenu_unquoted "${words[i + 1]}") && ((++i)) ;;
            --target) target=$(_pxmenu_unquoted "${words[i + 1]}") && ((++i)) ;;
            --tag | --ui | --key) ((++i)) ;;
            -*) ;;
            *) paths+=("$word") ;;
        esac
    done
    local -a request=()
    [[ -n $kind ]] && request+=(--kind "$kind")
    [[ -n $target ]] && request+=(--target "$target")
    "$program" menu --json "${request[@]}" -- "${paths[@]}" 2>/dev/null |
        grep -o '"tag":[0-9]*' | cut -d: -f2 | sort -un
}

# The keys (or paths) of a list's entries: `config list LIST` prints "index  on|off  key  (name)".
_pxmenu_entry_keys() {
    "$1" config list "$2" 2>/dev/null | cut -c11- | sed -e 's/  (.*)$//'
}

# The preference names: `config list pref` prints each name padded to 22 columns, then its value.
_pxmenu_preferences() {
    "$1" config list pref 2>/dev/null | cut -c1-22 | sed -e 's/ *$//'
}

_pxmenu_config() {
    local program=$1 sub=$2 at=$3
    local lists="right new-file folder-icon common-app common-path pref"
    # The position of the word being typed among the config command's arguments.
    local argument=0 i
    for ((i = at + 1; i < cword; i++)); do
        [[ ${words[i]} == -* ]] && continue
        [[ ${words[i - 1]} == --type || ${words[i - 1]} == --json ]] && continue
        ((++argument))
    done
    case $prev in
        --type)
            mapfile -t COMPREPLY < <(compgen -W "string bool int real json" -- "$cur")
            return
            ;;
        --json) return ;;
    esac
    if [[ $cur == -* ]]; then
        local options="--help"
        case $sub in
            add) options+=" --json --top" ;;
            set) options+=" --type --remove" ;;
        esac
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
        return
    fi
    local list
    list=$(_pxmenu_unquoted "${words[at + 1]}")
    case $sub:$argument in
        list:0 | show:0 | add:0 | remove:0 | set:0 | move:0)
            [[ $sub == add || $sub == remove || $sub == move ]] && lists=${lists% pref}
            mapfile -t COMPREPLY < <(compgen -W "$lists" -- "$cur")
            ;;
        show:1 | remove:1 | set:1)
            if [[ $list == pref || $list == prefs ]]; then
                _pxmenu_reply_lines "$(_pxmenu_unquoted "$cur")" < <(_pxmenu_preferences "$program")
            else
                _pxmenu_reply_lines "$(_pxmenu_unquoted "$cur")" \
                    < <(_pxmenu_entry_keys "$program" "$list")
            fi
            ;;
        add:1 | move:1 | move:2)
            [[ $sub == add && $list == common-path ]] && _filedir -d
            ;;
        set:3)
            [[ $list == pref* ]] && return
            mapfile -t COMPREPLY < <(compgen -W "true false" -- "$cur")
            ;;
        set:2)
            [[ $list == pref* ]] && mapfile -t COMPREPLY < <(compgen -W "true false" -- "$cur")
            ;;
    esac
}

_pxmenu() {
    local cur prev words cword
    _init_completion -n := || return
    # With the cursor in the middle of a line, between two blanks, the word can come as a blank.
    cur=${cur#"${cur%%[![:space:]]*}"}
    local program
    program=$(_pxmenu_unquoted "${words[0]}")

    # The command, and for config its own command, with their positions.
    local command= sub= at=0 i
    for ((i = 1; i < cword; i++)); do
        case ${words[i]} in
            -*) ;;
            *)
                if [[ -z $command ]]; then
                    command=${words[i]}
                elif [[ $command == config && -z $sub ]]; then
                    sub=${words[i]} at=$i
                    break
                fi
                ;;
        esac
        [[ -n $command && $command != config ]] && break
    done

    case $command in
        "")
            mapfile -t COMPREPLY < <(compgen -W "setup menu run config --version --help" -- "$cur")
            return
            ;;
        setup)
            mapfile -t COMPREPLY < <(compgen -W "--help" -- "$cur")
            return
            ;;
        config)
            if [[ -z $sub ]]; then
                mapfile -t COMPREPLY < <(compgen -W "list show add remove set move --help" -- "$cur")
                return
            fi
            _pxmenu_config "$program" "$sub" "$at"
            return
            ;;
    esac

    # menu and run.
    local dashes=
    for ((i = 2; i < cword; i++)); do
        [[ ${words[i]} == -- ]] && dashes=1
    done
    if [[ -z $dashes ]]; then
        case $prev in
            --kind)
                mapfile -t COMPREPLY < <(compgen -W "0 1 2 3" -- "$cur")
                return
                ;;
            --target)
                _filedir -d
                return
                ;;
            --tag)
                _pxmenu_reply_lines "$cur" < <(_pxmenu_tags "$program")
                return
                ;;
            --ui)
                if [[ $cur == script:* ]]; then
                    local file=${cur#script:}
                    cur=$file
                    _filedir
                    COMPREPLY=("${COMPREPLY[@]/#/script:}")
                else
                    mapfile -t COMPREPLY < <(compgen -W "terminal script: gui" -- "$cur")
                    [[ ${COMPREPLY[*]} == script: ]] && compopt -o nospace
                fi
                return
                ;;
        esac
        if [[ $cur == -* ]]; then
            local options="--kind --target --help --"
            [[ $command == menu ]] && options+=" --json"
            [[ $command == run ]] && options+=" --tag --key --ui"
            mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
            return
        fi
    fi
    _filedir
} && complete -F _pxmenu pxmenu
