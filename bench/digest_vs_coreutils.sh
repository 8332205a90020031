#!/usr/bin/env bash
# Times the project's digests against coreutils on a 1 GiB file of random bytes, side by side:
# the two tools run alternately, RUNS times each, and the medians are compared.
# Usage: bench/digest_vs_coreutils.sh [path/to/digest_tool]
# Build the tool first, in release mode, for example:
#   cmake -S . -B build/bench-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DPX_BUILD_BENCH=ON
#   cmake --build build/bench-release --target digest_tool
# Goals: SHA-256 and SHA-1 at least twice coreutils' speed, MD5 at least 0.95 of it. Speed is
# bytes per second of elapsed time (what a user waits for); CPU seconds are printed beside it,
# since on a busy machine the elapsed times also measure the other work.
set -euo pipefail

tool=${1:-build/bench-release/bench/digest_tool}
runs=${RUNS:-5}
[[ -x $tool ]] || { echo "digest_tool not found at $tool" >&2; exit 2; }

work=$(mktemp -d /tmp/pxmenu-digest-bench.XXXXXX)
trap 'rm -rf -- "$work"' EXIT
data=$work/data
head -c $((1 << 30)) /dev/urandom >"$data"
cat -- "$data" >/dev/null # both sides read from the page cache

# Runs the command once; prints "elapsed cpu" in seconds and leaves its first output word in $1.
timed() {
    local out=$1
    shift
    local spent
    spent=$( { TIMEFORMAT='%3R %3U %3S'; time "$@" >"$out.full"; } 2>&1 )
    cut -d' ' -f1 "$out.full" >"$out"
    awk -v t="$spent" 'BEGIN { split(t, p, " "); printf "%.3f %.3f\n", p[1], p[2] + p[3] }'
}

median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

printf 'load average: %s\n' "$(cut -d' ' -f1-3 /proc/loadavg)"
printf '%-8s %12s %12s %12s %12s %9s %6s\n' algorithm "ours (s)" "theirs (s)" "ours cpu" \
    "theirs cpu" ratio goal
status=0
for pair in sha256:2 sha1:2 md5:0.95; do
    algorithm=${pair%%:*}
    goal=${pair##*:}
    : >"$work/ours" && : >"$work/theirs"
    for ((i = 0; i < runs; i++)); do
        timed "$work/o" "$tool" "$algorithm" "$data" >>"$work/ours"
        timed "$work/t" "${algorithm}sum" -- "$data" >>"$work/theirs"
        cmp -s "$work/o" "$work/t" || { echo "$algorithm: digests differ" >&2; status=1; }
    done
    ours=$(cut -d' ' -f1 "$work/ours" | median)
    theirs=$(cut -d' ' -f1 "$work/theirs" | median)
    ours_cpu=$(cut -d' ' -f2 "$work/ours" | median)
    theirs_cpu=$(cut -d' ' -f2 "$work/theirs" | median)
    ratio=$(awk -v a="$theirs" -v b="$ours" 'BEGIN { printf "%.3f", a / b }')
    met=$(awk -v r="$ratio" -v g="$goal" 'BEGIN { print (r >= g) ? 1 : 0 }')
    printf '%-8s %12.2f %12.2f %12.2f %12.2f %8.2fx %5sx %s\n' "$algorithm" "$ours" "$theirs" \
        "$ours_cpu" "$theirs_cpu" "$ratio" "$goal" "$([[ $met == 1 ]] && echo met || echo MISSED)"
done
exit $status
