#!/usr/bin/env bash
# Times the project's digests against coreutils on a 1 GiB file of random bytes.
# Usage: bench/digest_vs_coreutils.sh [path/to/digest_tool]
# Build the tool first, in release mode, for example:
#   cmake -S . -B build/bench-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DPX_BUILD_BENCH=ON
#   cmake --build build/bench-release --target digest_tool
# Goals: SHA-256 and SHA-1 at least twice coreutils' speed, MD5 at least 0.95 of it.
set -euo pipefail

tool=${1:-build/bench-release/bench/digest_tool}
[[ -x $tool ]] || { echo "digest_tool not found at $tool" >&2; exit 2; }

data=$(mktemp /tmp/pxmenu-digest-bench.XXXXXX)
trap 'rm -f -- "$data"' EXIT
head -c $((1 << 30)) /dev/urandom >"$data"
cat -- "$data" >/dev/null # both sides read from the page cache

# CPU seconds (user + system) the command took, which stays meaningful on a busy machine; its
# first output word goes to the file named by $1.
timed() {
    local out=$1
    shift
    local spent
    spent=$( { TIMEFORMAT='%3U %3S'; time "$@" >"$out.full"; } 2>&1 )
    cut -d' ' -f1 "$out.full" >"$out"
    rm -f -- "$out.full"
    awk -v t="$spent" 'BEGIN { split(t, p, " "); printf "%.3f", p[1] + p[2] }'
}

printf '%-8s %14s %18s %9s %6s\n' algorithm "ours (cpu s)" "coreutils (cpu s)" ratio goal
status=0
for pair in sha256:2 sha1:2 md5:0.95; do
    algorithm=${pair%%:*}
    goal=${pair##*:}
    ours=$(timed /tmp/pxmenu-digest-ours.$$ "$tool" "$algorithm" "$data")
    theirs=$(timed /tmp/pxmenu-digest-theirs.$$ "${algorithm}sum" -- "$data")
    if ! cmp -s /tmp/pxmenu-digest-ours.$$ /tmp/pxmenu-digest-theirs.$$; then
        echo "$algorithm: digests differ" >&2
        status=1
    fi
    rm -f /tmp/pxmenu-digest-ours.$$ /tmp/pxmenu-digest-theirs.$$
    ratio=$(awk -v a="$theirs" -v b="$ours" 'BEGIN { printf "%.3f", a / b }')
    met=$(awk -v r="$ratio" -v g="$goal" 'BEGIN { print (r >= g) ? 1 : 0 }')
    printf '%-8s %14.2f %18.2f %8.2fx %5sx %s\n' "$algorithm" "$ours" "$theirs" "$ratio" "$goal" \
        "$([[ $met == 1 ]] && echo met || echo MISSED)"
done
exit $status
