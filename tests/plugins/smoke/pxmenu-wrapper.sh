#!/bin/sh
# Stands in for pxmenu when a smoke test's plugin starts it. It logs the arguments, then runs
# the real pxmenu (PXMENU_REAL) with the graphical hand-off replaced by the scripted answers in
# PXMENU_ANSWERS, and without --key pairs when the real pxmenu does not know that option yet.
# Paths after "--" pass unchanged.
log="$PXMENU_LOG"
printf '%s\n' "$@" > "$log.args"
key_known=""
"$PXMENU_REAL" run --help 2>/dev/null | grep -q -- '--key' && key_known=yes
count=$#
drop=""
paths=""
while [ "$count" -gt 0 ]; do
    arg=$1
    shift
    count=$((count - 1))
    if [ -n "$paths" ]; then
        set -- "$@" "$arg"
    elif [ "$drop" = ui ]; then
        set -- "$@" "script:$PXMENU_ANSWERS"
        drop=""
    elif [ "$drop" = key ]; then
        drop=""
    elif [ "$arg" = "--ui" ]; then
        set -- "$@" "$arg"
        drop=ui
    elif [ "$arg" = "--key" ] && [ -z "$key_known" ]; then
        drop=key
    else
        [ "$arg" = "--" ] && paths=yes
        set -- "$@" "$arg"
    fi
done
"$PXMENU_REAL" "$@" >> "$log" 2>&1
echo "exit $?" >> "$log"
