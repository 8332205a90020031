#!/usr/bin/env bash
# Start-up of the settings window: the time from starting pxmenu-settings to its window's first
# paint (the program prints it and quits), over a factory configuration in a scratch home. The
# first run after the page cache was dropped is the cold start (needs root; otherwise the first
# run is reported as it is); the others are warm. Offscreen always, and on an X server (xcb)
# when DISPLAY is set. The goal is 250 ms cold.
#
#   bench/settings_startup.sh [RUNS]
#
# BUILD_DIR chooses the build folder (default: build/release, built here when missing).
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$root/build/release}
runs=${1:-10}
goal=250

if [ ! -x "$build/hosts/settings/pxmenu-settings" ] || [ ! -x "$build/hosts/cli/pxmenu" ]; then
    cmake --preset release -B "$build" >/dev/null
    cmake --build "$build" -j "${JOBS:-2}" --target pxmenu-settings pxmenu
fi
program="$build/hosts/settings/pxmenu-settings"

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export HOME=$scratch XDG_CONFIG_HOME=$scratch/.config XDG_DATA_HOME=$scratch/.local/share
export XDG_RUNTIME_DIR=$scratch/run
mkdir -p "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"
"$build/hosts/cli/pxmenu" setup

# One start: prints the program's own figure (main() to first paint) and the whole process
# time (exec to exit), in milliseconds.
one_start() {
    local started ended inside
    started=$(date +%s%N)
    inside=$(QT_QPA_PLATFORM=$1 "$program" --first-paint-exit 2>/dev/null | awk '{print $3}')
    ended=$(date +%s%N)
    echo "$inside $(( (ended - started) / 1000000 ))"
}

median() { sort -n | awk '{a[NR]=$1} END {print (NR % 2) ? a[(NR+1)/2] : (a[NR/2] + a[NR/2+1]) / 2}'; }

platforms=(offscreen)
[ -n "${DISPLAY:-}" ] && platforms+=(xcb)
for platform in "${platforms[@]}"; do
    cold="first run"
    if sync && echo 3 > /proc/sys/vm/drop_caches 2>/dev/null; then cold="cold (page cache dropped)"; fi
    read -r inside whole <<<"$(one_start "$platform")"
    printf '%-9s %-26s main->paint %7.1f ms  exec->exit %5d ms  (goal %d ms: %.2fx)\n' \
        "$platform" "$cold" "$inside" "$whole" "$goal" "$(awk -v a="$whole" -v b="$goal" 'BEGIN {print a / b}')"
    warm_inside=() warm_whole=()
    for ((i = 0; i < runs; i++)); do
        read -r inside whole <<<"$(one_start "$platform")"
        warm_inside+=("$inside") warm_whole+=("$whole")
    done
    mi=$(printf '%s\n' "${warm_inside[@]}" | median)
    mw=$(printf '%s\n' "${warm_whole[@]}" | median)
    printf '%-9s %-26s main->paint %7.1f ms  exec->exit %5s ms  (goal %d ms: %.2fx)\n' \
        "$platform" "warm, median of $runs" "$mi" "$mw" "$goal" "$(awk -v a="$mw" -v b="$goal" 'BEGIN {print a / b}')"
done
