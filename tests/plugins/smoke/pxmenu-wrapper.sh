#!/bin/sh
# Stands in for pxmenu when a smoke test's plugin starts it. It logs the arguments, then runs
# the real pxmenu (PXMENU_REAL) with the graphical hand-off replaced by the scripted answers in
# PXMENU_ANSWERS. Every other argument, and the paths after "--", pass unchanged.
log="$PXMENU_LOG"
printf '%s\n' "$@" > "$log.args"
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
    elif [ "$arg" = "--ui" ]; then
        set -- "$@" "$arg"
        drop=ui
    else
        [ "$arg" = "--" ] && paths=yes
        set -- "$@" "$arg"
    fi
done
"$PXMENU_REAL" "$@" >> "$log" 2>&1
echo "exit $?" >> "$log"
