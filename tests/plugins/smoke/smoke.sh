#!/usr/bin/env bash
# A real file manager under Xvfb and dbus-run-session with the built plugin: right-click on a
# real file, keep the menu's screenshot, choose "Hide Selected Files" from the keyboard and
# check that the folder's .hidden names the file.
#   smoke.sh HOST PLUGIN PXMENU OUTPUT_DIR [probe]
# Exit status 77 (skipped, reason on standard output) when no display or host can be had.
set -uo pipefail
host=$1 plugin=$2 pxmenu=$3 output=$4 mode=${5:-run}
here=$(cd "$(dirname "$0")" && pwd)
skip() { echo "SKIP: $*"; exit 77; }

# Per host: program, where it reads plugins, where to right-click, keys choosing the entry.
case $host in
caja) program=caja args=(--no-desktop) system_dir="" click=(247 145) keys=(Up Up Up Return) ;;
nemo) program=nemo args=() click=(247 145) keys=(Up Up Up Return)
    system_dir=$(pkg-config --variable=extensiondir libnemo-extension) ;;
nautilus) program=nautilus args=(--new-window) click=(338 130) keys=(Up Up Up Return)
    system_dir=$(pkg-config --variable=extensiondir libnautilus-extension-4) ;;
thunar) program=thunar args=() click=(211 145) keys=(Up Up Up Return)
    system_dir=$(pkg-config --variable=extensionsdir thunarx-3) ;;
dolphin) program=dolphin args=() system_dir="" click=(322 187) keys=(Up Up Up Return) ;;
*) skip "no smoke test for $host" ;;
esac

if [ "${1:-}" != --inner ] && [ -z "${PX_SMOKE_INNER:-}" ]; then
    for tool in Xvfb xdotool import dbus-run-session "$program"; do
        command -v "$tool" >/dev/null || skip "$tool is not installed"
    done
    [ -f "$plugin" ] || skip "the plugin $plugin was not built"
    if [ -n "$system_dir" ]; then
        unshare -m true 2>/dev/null || skip "no private mount namespace (unshare -m) for $host"
    fi
    work=$(mktemp -d /tmp/pxmenu-smoke-XXXXXX)
    trap 'kill "$xvfb" 2>/dev/null; rm -rf "$work"' EXIT
    exec 3>"$work/display"
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp >"$work/xvfb.log" 2>&1 &
    xvfb=$!
    for _ in $(seq 50); do [ -s "$work/display" ] && break; sleep 0.1; done
    [ -s "$work/display" ] || skip "Xvfb did not start: $(tail -1 "$work/xvfb.log")"
    export DISPLAY=":$(head -1 "$work/display")" HOME="$work/home" PX_SMOKE_INNER=1
    export XDG_CONFIG_HOME="$HOME/.config" XDG_DATA_HOME="$HOME/.local/share"
    export XDG_CACHE_HOME="$HOME/.cache" XDG_RUNTIME_DIR="$work/run" GSK_RENDERER=cairo
    export NO_AT_BRIDGE=1 GTK_A11Y=none
    mkdir -p "$HOME/folder" "$output" && mkdir -m 700 "$XDG_RUNTIME_DIR"
    "$pxmenu" setup && "$pxmenu" config set pref "is reviewed" true >/dev/null
    echo text >"$HOME/folder/notes.txt"
    : >"$work/answers"
    export PXMENU_PROGRAM="$here/pxmenu-wrapper.sh" PXMENU_REAL="$pxmenu"
    export PXMENU_ANSWERS="$work/answers" PXMENU_LOG="$work/pxmenu.log"
    export CAJA_EXTENSION_DIRS=$(dirname "$plugin") QT_QPA_PLATFORM=xcb
    # Dolphin finds plugins under kf5/kfileitemaction in each folder of QT_PLUGIN_PATH.
    [ "$host" = dolphin ] && export QT_PLUGIN_PATH=$(dirname "$(dirname "$(dirname "$plugin")")")
    inner=(dbus-run-session -- bash "$0" "$@")
    if [ -n "$system_dir" ]; then
        # Over the host's extension folder, or over its parent (copied) where it does not exist.
        mount_source="$work/extensions" mount_target="$system_dir"
        if [ ! -d "$system_dir" ]; then
            mount_target=$(dirname "$system_dir") mount_source="$work/parent"
            cp -a "$mount_target" "$mount_source"
        fi
        mkdir -p "$work/extensions" && cp "$plugin" "$work/extensions/"
        [ -d "$system_dir" ] || cp -a "$work/extensions" "$mount_source/$(basename "$system_dir")"
        unshare -m bash -c 'mount --bind "$0" "$1" && exec "${@:2}"' \
            "$mount_source" "$mount_target" "${inner[@]}"
    else
        "${inner[@]}"
    fi
    status=$?
    [ -f "$work/pxmenu.log" ] && sed 's/^/pxmenu: /' "$work/pxmenu.log"
    exit $status
fi

# Inside the session.
folder="$HOME/folder"
"$program" "${args[@]}" "$folder" >"$output/$host-stderr.log" 2>&1 &
manager=$!
trap 'kill $manager 2>/dev/null; wait $manager 2>/dev/null' EXIT
window=$(timeout 30 xdotool search --sync --onlyvisible --name "folder" | head -1)
[ -n "$window" ] || { echo "FAIL: no $host window"; exit 1; }
xdotool windowmove "$window" 0 0 windowsize "$window" 900 600 windowactivate "$window" 2>/dev/null
sleep 3
if [ "$mode" = probe ]; then
    import -window root "$output/$host-window.png"
    exit 0
fi
xdotool mousemove "${click[@]}" click 1
sleep 0.5
xdotool click 3
sleep 2
import -window root "$output/$host-menu.png"
xdotool key --delay 150 "${keys[@]}"
for _ in $(seq 100); do
    grep -qx notes.txt "$folder/.hidden" 2>/dev/null && break
    sleep 0.1
done
if grep -qx notes.txt "$folder/.hidden" 2>/dev/null; then
    echo "PASS: $host ran Hide Selected Files; menu in $output/$host-menu.png"
    exit 0
fi
import -window root "$output/$host-after.png"
echo "FAIL: $host: no .hidden naming notes.txt; menu in $output/$host-menu.png"
exit 1
