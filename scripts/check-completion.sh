#!/usr/bin/env bash
# Checks the bash completion against an installed pxmenu: completes command lines as bash would
# and compares the offers with what the program prints.
#   PXMENU_ROOT=<root> PXMENU_WORK=<folder with notes.txt> PXMENU_HOME=<home>
#   scripts/check-completion.sh <completion file>
set -uo pipefail
completion=$1
program=$PXMENU_ROOT/usr/bin/pxmenu
work=$PXMENU_WORK
export HOME=$PXMENU_HOME XDG_CONFIG_HOME=$PXMENU_HOME/config XDG_DATA_HOME=$PXMENU_HOME/data
export XDG_RUNTIME_DIR=$PXMENU_HOME/runtime LANG=C.UTF-8
source /usr/share/bash-completion/bash_completion
source "$completion"

failures=0
# Completes the line with the cursor at the mark @@ (at its end when it has none) and prints the
# offers one a line, sorted. Words are split at spaces.
offers() {
    local line="$program $1" i
    [[ $line == *@@* ]] || line+=@@
    local before=${line%%@@*}
    COMP_LINE=${line/@@/} COMP_POINT=${#before}
    read -ra COMP_WORDS <<<"$line"
    for i in "${!COMP_WORDS[@]}"; do
        [[ ${COMP_WORDS[i]} == *@@* ]] && COMP_WORDS[i]=${COMP_WORDS[i]/@@/} COMP_CWORD=$i
    done
    COMPREPLY=()
    _pxmenu
    printf '%s\n' "${COMPREPLY[@]}" | sort
}
expect() {
    local what=$1 line=$2 expected=$3 got
    got=$(offers "$line")
    if [ "$got" != "$(sort <<<"$expected")" ]; then
        echo "completion of '$line' ($what): expected"$'\n'"$expected"$'\n'"got"$'\n'"$got" >&2
        failures=$((failures + 1))
    fi
}
expect_some() {
    local what=$1 line=$2 expected=$3
    grep -qxF -- "$expected" <(offers "$line") || {
        echo "completion of '$line' ($what): no '$expected' in: $(offers "$line" | tr '\n' ' ')" >&2
        failures=$((failures + 1))
    }
}

expect "commands" "" $'setup\nmenu\nrun\nconfig\n--version\n--help'
expect "run options" "run --t" $'--tag\n--target'
expect "menu kinds" "menu --kind " $'0\n1\n2\n3'
expect "ui modes" "run --ui " $'terminal\nscript:\ngui'
expect "config commands" "config " $'list\nshow\nadd\nremove\nset\nmove\n--help'
expect "list names" "config list " $'right\nnew-file\nfolder-icon\ncommon-app\ncommon-path\npref'
expect "set types" "config set right Delete disabled x --type " $'string\nbool\nint\nreal\njson'
expect_some "entry keys" "config show right Copy" 'Copy\ Path'
expect_some "preferences" "config show pref use" 'use\ count'

# The tags of the selection's menu, every level, as `menu --json` gives them.
tags=$("$program" menu --json --target "$work" -- "$work/notes.txt" | python3 -c '
import json, sys
def walk(entries):
    for entry in entries:
        yield entry["tag"]
        yield from walk(entry["children"])
print("\n".join(str(tag) for tag in sorted(set(walk(json.load(sys.stdin))))))')
[ -n "$tags" ] || { echo "no menu to complete tags from" >&2; exit 1; }
expect "tags of the selection" "run --target $work --tag @@ -- $work/notes.txt" "$tags"
background=$("$program" menu --json --kind 1 --target "$work" | grep -o '"tag":[0-9]*' |
    cut -d: -f2 | sort -un)
expect "tags of the background" "run --kind 1 --target $work --tag " "$background"

[ $failures -eq 0 ] && echo "completion: all offers as expected"
exit $((failures > 0))
