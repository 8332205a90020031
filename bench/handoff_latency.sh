#!/usr/bin/env bash
# The extension process's figures, on a private Xvfb display and session bus:
#   hand-off latency of `pxmenu run --ui gui` while the process is up (goal <= 5 ms median),
#   cold start to the first window mapped (goal <= 150 ms), idle RSS (goal < 40 MB).
# The reference the hand-off is set against is `true` started the same way (process start cost).
# Usage: bench/handoff_latency.sh [BUILD_DIR]   (default build/release, else build/debug)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/release}
[ -x "$build/hosts/cli/pxmenu" ] || build=build/debug
pxmenu=$PWD/$build/hosts/cli/pxmenu
export PXMENU_EXTENSION=$PWD/$build/hosts/gui/pxmenu-extension
root=$(mktemp -d)
trap 'kill $xvfb 2>/dev/null; kill $(cat $root/ext.pid 2>/dev/null) 2>/dev/null; rm -rf "$root"' EXIT
export HOME=$root XDG_CONFIG_HOME=$root/cfg XDG_DATA_HOME=$root/data XDG_RUNTIME_DIR=$root/run
mkdir -p "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"
exec 3< <(Xvfb -displayfd 1 -screen 0 1280x800x24 -nolisten tcp 2>/dev/null)
read -r display <&3
xvfb=$(pgrep -n Xvfb)
export DISPLAY=:$display QT_QPA_PLATFORM=xcb
eval "$(dbus-launch --sh-syntax)"
"$pxmenu" setup >/dev/null
"$pxmenu" config set pref "is reviewed" true
echo a > "$root/a.txt"
tag=$("$pxmenu" menu --json --target "$root" -- "$root/a.txt" |
      python3 -c 'import json,sys; print([e["tag"] for e in json.load(sys.stdin) if e["key"]=="Copy Path"][0])')
req=(run --tag "$tag" --ui gui --target "$root" -- "$root/a.txt")

median() { sort -n | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }
now() { date +%s%N; }

# Cold start: no process yet; the time until the first window (an alert) is mapped.
settings=$("$pxmenu" menu --json --target "$root" -- "$root/a.txt" | python3 -c '
import json, sys
print([c["tag"] for e in json.load(sys.stdin) for c in e.get("children", []) if c["key"] == "Go Set"][0])')
"$pxmenu" run --tag "$settings" --ui gui --target "$root" -- "$root/a.txt" >/dev/null &
start=$(now)
xdotool search --sync --onlyvisible --class pxmenu >/dev/null
cold=$(( ($(now) - start) / 1000000 ))
xdotool key --clearmodifiers Return
sleep 1
pgrep -f "$PXMENU_EXTENSION" | head -1 > "$root/ext.pid"

for _ in $(seq 50); do
    s=$(now); "$pxmenu" "${req[@]}" >/dev/null; echo $(( ($(now) - s) / 1000 ))
done | median > "$root/handoff"
for _ in $(seq 50); do
    s=$(now); true; /bin/true; echo $(( ($(now) - s) / 1000 ))
done | median > "$root/true"
sleep 2
rss=$(awk '/VmRSS/ {print $2}' "/proc/$(cat "$root/ext.pid")/status")

handoff=$(cat "$root/handoff"); reference=$(cat "$root/true")
awk -v h="$handoff" -v r="$reference" 'BEGIN {
    printf "hand-off latency, median of 50: %d us (goal <= 5000); /bin/true started: %d us; ratio %.1f\n", h, r, h / r }' 
printf 'cold start to first window mapped: %d ms (goal <= 150)\n' "$cold"
awk -v k="$rss" 'BEGIN { printf "idle RSS of pxmenu-extension: %.1f MB (goal < 40)\n", k / 1024 }' 
kill "$DBUS_SESSION_BUS_PID" 2>/dev/null || true
