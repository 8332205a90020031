#!/usr/bin/env bash
# Times the project's copy engine (bench/copy_tool, the code behind "Copy to") against
# `cp -r --preserve=mode,timestamps` on the same file system, on (1) a 1 GiB file of random
# bytes and (2) a tree of 10,000 small files in 100 folders. Runs alternate between the two
# tools, and so does which one goes first; every run counts. The ratio is speed ours / speed
# cp (cp's total wall time over ours). Each copy is checked against its source and removed
# (untimed, after a sync) before the next run. Goal: at least 0.95.
#
#   bench/copy_vs_cp.sh
#
# BUILD_DIR chooses the release build folder (default build/release), RUNS the runs per tool
# and data set (default 5), BENCH_DIR where the data goes (default $TMPDIR or /tmp).
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$root/build/release}
runs=${RUNS:-5}
jobs=${JOBS:-2}

cd "$root"
cmake --preset release -B "$build" -DPX_BUILD_BENCH=ON >/dev/null
cmake --build "$build" -j "$jobs" --target copy_tool >"$build/copy_tool-build.log" 2>&1 ||
    { tail -20 "$build/copy_tool-build.log" >&2; exit 1; }
tool="$build/bench/copy_tool"

work=$(mktemp -d "${BENCH_DIR:-${TMPDIR:-/tmp}}/pxcopy-bench-XXXXXX")
trap 'rm -rf -- "$work"' EXIT

head -c $((1 << 30)) /dev/urandom >"$work/big"
python3 - "$work/tree" <<'PY'
import os, random, sys
random.seed(7)
root = sys.argv[1]
for d in range(100):
    folder = os.path.join(root, f"folder-{d:03}")
    os.makedirs(folder)
    for f in range(100):
        with open(os.path.join(folder, f"file-{f:03}.txt"), "wb") as out:
            out.write(random.randbytes(random.randint(0, 8192)))
PY
sync

# "wall cpu" seconds of one copy (cpu = user + system, which stays meaningful on a busy
# machine), with millisecond precision.
timed() {
    local spent
    spent=$( { TIMEFORMAT='%3R %3U %3S'; time "$@" >/dev/null; } 2>&1 )
    awk -v t="$spent" 'BEGIN { split(t, p, " "); printf "%.3f %.3f", p[1], p[2] + p[3] }'
}

# The copy must equal its source: contents, kinds, modes, modification times and sizes.
listing() { find "$1" -printf '%P %y %m %T@ %s\n' | sort; }
check() {
    local source=$1 copy=$2
    if [ -d "$source" ]; then diff -r -- "$source" "$copy" >/dev/null; else cmp -s -- "$source" "$copy"; fi ||
        { echo "the contents of $copy differ from $source" >&2; exit 1; }
    [ "$(listing "$source")" = "$(listing "$copy")" ] ||
        { echo "kinds, modes or times of $copy differ from $source" >&2; exit 1; }
}

run_ours() {
    local took
    took=$(timed "$tool" "$work/$1" "$work/$1.ours")
    check "$work/$1" "$work/$1.ours"
    rm -rf -- "$work/$1.ours"
    sync
    echo "$took"
}
run_cp() {
    local took
    took=$(timed cp -r --preserve=mode,timestamps -- "$work/$1" "$work/$1.cp")
    check "$work/$1" "$work/$1.cp"
    rm -rf -- "$work/$1.cp"
    sync
    echo "$took"
}

status=0
printf '%-6s %4s %18s %18s\n' "data" "run" "ours wall / cpu" "cp wall / cpu"
for set in big tree; do
    totals="0 0 0 0"
    for run in $(seq 1 "$runs"); do
        # Who goes first alternates too, so that neither side always follows the other's
        # write-back.
        if ((run % 2)); then
            ours=$(run_ours "$set")
            theirs=$(run_cp "$set")
        else
            theirs=$(run_cp "$set")
            ours=$(run_ours "$set")
        fi
        printf '%-6s %4d %18s %18s\n' "$set" "$run" "${ours/ / \/ }" "${theirs/ / \/ }"
        totals=$(awk -v t="$totals" -v o="$ours" -v c="$theirs" 'BEGIN {
            split(t, s, " "); split(o, a, " "); split(c, b, " ")
            printf "%.3f %.3f %.3f %.3f", s[1] + a[1], s[2] + a[2], s[3] + b[1], s[4] + b[2] }')
    done
    read -r ours_wall ours_cpu cp_wall cp_cpu <<<"$totals"
    wall=$(awk -v o="$ours_wall" -v c="$cp_wall" 'BEGIN { printf "%.3f", c / o }')
    cpu=$(awk -v o="$ours_cpu" -v c="$cp_cpu" 'BEGIN { printf "%.3f", c / o }')
    met=$(awk -v r="$wall" 'BEGIN { print (r >= 0.95) ? "met" : "MISSED" }')
    [ "$met" = met ] || status=1
    printf '%-6s total %18s %18s\n' "$set" "$ours_wall / $ours_cpu" "$cp_wall / $cp_cpu"
    printf '%-6s ratio (speed ours / speed cp): wall %sx, cpu %sx; goal 0.95x on wall: %s\n' \
        "$set" "$wall" "$cpu" "$met"
done
exit $status
