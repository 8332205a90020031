#!/usr/bin/env bash
# Times the start of pxmenu's light commands against qpdf's, side by side in one run:
# `pxmenu --version` and `pxmenu menu -- FILE` against `qpdf --version`, each the mean of many
# runs under `perf stat` (or bash's clock when perf is missing), with the number of shared
# libraries the loader maps for each. Goal: within 1.2x of qpdf.
#
#   bench/start_vs_qpdf.sh [-r RUNS] [PXMENU]
# PXMENU defaults to the release preset's build (built if absent).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
runs=200
while getopts "r:" option; do
    case "$option" in
    r) runs="$OPTARG" ;;
    *) exit 2 ;;
    esac
done
shift $((OPTIND - 1))
pxmenu="${1:-}"
if [ -z "$pxmenu" ]; then
    (cd "$root" && cmake --preset release >/dev/null && cmake --build --preset release --target pxmenu >/dev/null)
    pxmenu="$root/build/release/hosts/cli/pxmenu"
fi
command -v qpdf >/dev/null || { echo "qpdf is missing: run scripts/install-deps.sh" >&2; exit 1; }

work="$(mktemp -d "${TMPDIR:-/tmp}/pxstart-bench-XXXXXX")"
trap 'rm -rf "$work"' EXIT
export XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data"
"$pxmenu" setup >/dev/null
echo text >"$work/notes.txt"

# Mean wall seconds of `runs` runs of the command.
mean_seconds() {
    if command -v perf >/dev/null && perf stat -r 1 true >/dev/null 2>&1; then
        perf stat -r "$runs" "$@" 2>&1 >/dev/null |
            awk '/seconds time elapsed/ { print $1 }'
    else
        local start end
        start=$(date +%s.%N)
        for _ in $(seq "$runs"); do "$@" >/dev/null; done
        end=$(date +%s.%N)
        awk -v s="$start" -v e="$end" -v n="$runs" 'BEGIN { print (e - s) / n }'
    fi
}

libraries() { LD_DEBUG=files "$@" 2>&1 >/dev/null | grep -c "calling init:" || true; }

qpdf_time=$(mean_seconds qpdf --version)
version_time=$(mean_seconds "$pxmenu" --version)
menu_time=$(mean_seconds "$pxmenu" menu -- "$work/notes.txt")
printf "%-28s %12s %10s %10s\n" "command" "mean (ms)" "ratio" "libraries"
printf "%-28s %12.2f %10s %10s\n" "qpdf --version" "$(awk -v t="$qpdf_time" 'BEGIN { print t * 1000 }')" "1.00" "$(libraries qpdf --version)"
for row in "pxmenu --version:$version_time:--version" "pxmenu menu -- FILE:$menu_time:menu"; do
    IFS=: read -r label seconds which <<<"$row"
    if [ "$which" = menu ]; then count=$(libraries "$pxmenu" menu -- "$work/notes.txt"); else count=$(libraries "$pxmenu" --version); fi
    printf "%-28s %12.2f %10.2f %10s\n" "$label" "$(awk -v t="$seconds" 'BEGIN { print t * 1000 }')" \
        "$(awk -v t="$seconds" -v q="$qpdf_time" 'BEGIN { print t / q }')" "$count"
done
echo "load average: $(cut -d' ' -f1-3 /proc/loadavg)"
