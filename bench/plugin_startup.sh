#!/usr/bin/env bash
# The start-up time each file manager adds with the pxmenu plugin loaded: the time from launch
# to its window showing a folder, under Xvfb and dbus-run-session, with and without the plugin,
# run alternately; prints the medians, the difference and the ratio.
#   bench/plugin_startup.sh [BUILD_DIR] [RUNS]
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build/release}
runs=${2:-5}
pxmenu=$build/hosts/cli/pxmenu

work=$(mktemp -d /tmp/pxmenu-startup-XXXXXX)
trap 'kill "$xvfb" 2>/dev/null; rm -rf "$work"' EXIT
exec 3>"$work/display"
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
for _ in $(seq 50); do [ -s "$work/display" ] && break; sleep 0.1; done
export DISPLAY=":$(head -1 "$work/display")" HOME="$work/home" GSK_RENDERER=cairo NO_AT_BRIDGE=1
export XDG_CONFIG_HOME="$HOME/.config" XDG_DATA_HOME="$HOME/.local/share" XDG_RUNTIME_DIR="$work/run"
mkdir -p "$HOME/folder" && mkdir -m 700 "$XDG_RUNTIME_DIR" && touch "$HOME/folder/notes.txt"
"$pxmenu" setup

# Seconds from launch to a visible window titled after the folder, appended to $TIMES.
time_one() { # program args...
    local start end pid
    start=$(date +%s.%N)
    "$@" "$HOME/folder" >/dev/null 2>&1 &
    pid=$!
    timeout 30 xdotool search --sync --onlyvisible --name folder >/dev/null
    end=$(date +%s.%N)
    kill $pid 2>/dev/null
    wait $pid 2>/dev/null
    echo "$end - $start" | bc >>"$TIMES"
}
export -f time_one

median() { sort -n | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }

measure() { # host extension_dir plugin program args...
    local host=$1 dir=$2 plugin=$3
    shift 3
    # Each variant's folder goes over the extension folder, or over a copy of its parent where
    # the host has none; Caja and Dolphin are pointed at it instead.
    local target=$dir inside=""
    [ "$host" = dolphin ] && inside=/kf5/kfileitemaction
    if [ "$host" != caja ] && [ "$host" != dolphin ] && [ ! -d "$dir" ]; then
        target=$(dirname "$dir") inside=/$(basename "$dir")
    fi
    for variant in with without; do
        mkdir -p "$work/$host"
        if [ -n "$inside" ] && [ "$host" != dolphin ]; then
            cp -a "$target" "$work/$host/$variant"
        fi
        mkdir -p "$work/$host/$variant$inside"
        [ -d "$dir" ] && cp -a "$dir"/. "$work/$host/$variant$inside/"
    done
    cp "$plugin" "$work/$host/with$inside/"
    for _ in $(seq "$runs"); do
        for variant in without with; do
            export TIMES="$work/$host/$variant.times"
            if [ "$host" = dolphin ]; then
                QT_PLUGIN_PATH="$work/$host/$variant" dbus-run-session -- \
                    bash -c 'time_one "$@"' _ "$@" >/dev/null 2>&1
            elif [ "$host" = caja ]; then
                CAJA_EXTENSION_DIRS="$work/$host/$variant" dbus-run-session -- \
                    bash -c 'time_one "$@"' _ "$@" >/dev/null 2>&1
            else
                unshare -m bash -c 'mount --bind "$0" "$1" && shift 2 &&
                    dbus-run-session -- bash -c "time_one \"\$@\"" _ "$@"' \
                    "$work/$host/$variant" "$target" x "$@" >/dev/null 2>&1
            fi
        done
    done
    local a b
    a=$(median <"$work/$host/without.times")
    b=$(median <"$work/$host/with.times")
    printf '%-9s without %.3f s  with %.3f s  added %+.3f s  ratio %.2f\n' "$host" "$a" "$b" \
        "$(echo "$b - $a" | bc)" "$(echo "$b / $a" | bc -l)"
}

plugins=$build/plugins
for host in ${HOSTS:-nautilus nemo caja thunar dolphin}; do
    plugin=$plugins/$host/libpxmenu-$host.so
    [ "$host" = dolphin ] && plugin=$plugins/dolphin/kf5/kfileitemaction/pxmenu-dolphin.so
    [ -f "$plugin" ] || continue
    case $host in
    nautilus) measure nautilus "$(pkg-config --variable=extensiondir libnautilus-extension-4)" \
        "$plugin" nautilus --new-window ;;
    nemo) measure nemo "$(pkg-config --variable=extensiondir libnemo-extension)" "$plugin" nemo ;;
    caja) measure caja /nonexistent "$plugin" caja --no-desktop ;;
    thunar) measure thunar "$(pkg-config --variable=extensionsdir thunarx-3)" "$plugin" thunar ;;
    dolphin) measure dolphin /nonexistent "$plugin" dolphin ;;
    esac
done
