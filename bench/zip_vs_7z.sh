#!/usr/bin/env bash
# Times pxmenu's zip writer against 7-Zip side by side on generated trees, both writing a zip
# archive with AES-256 and a password, and prints for each tree the medians of the wall time, CPU
# time, size and peak memory of each writer and their ratios, with the load average.
#   tree "files": about 200 MB in several thousand files, text and random data, empty folders
#   tree "one":   one file of 1 GB, text with stretches of random data
#
#   bench/zip_vs_7z.sh [-r ROUNDS] [-t files|one|both] [ZIP_TOOL]
# ZIP_TOOL defaults to bench/zip_tool of the release preset's build (configured with benchmarks
# and built if absent). Rounds alternate the two writers; the default is 3.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
rounds=3
trees=both
while getopts "r:t:" option; do
    case "$option" in
    r) rounds="$OPTARG" ;;
    t) trees="$OPTARG" ;;
    *) exit 2 ;;
    esac
done
shift $((OPTIND - 1))
tool="${1:-}"
if [ -z "$tool" ]; then
    build="$root/build/release"
    (cd "$root" && cmake --preset release -DPX_BUILD_BENCH=ON >/dev/null)
    cmake --build "$build" --target zip_tool -j "$(nproc)" >"$build/zip_tool-build.log" 2>&1 ||
        { tail -20 "$build/zip_tool-build.log" >&2; exit 1; }
    tool="$build/bench/zip_tool"
fi
tool="$(realpath "$tool")"
sevenzip="$(command -v 7zz || command -v 7z || true)"
[ -n "$sevenzip" ] || { echo "7-Zip is missing: run scripts/install-deps.sh" >&2; exit 1; }
[ -x /usr/bin/time ] || { echo "/usr/bin/time is missing: run scripts/install-deps.sh" >&2; exit 1; }

work="$(mktemp -d "${TMPDIR:-/tmp}/pxzip-bench-XXXXXX")"
trap 'rm -rf "$work"' EXIT
password='bench-password-1' # 7-Zip refuses non-ASCII zip passwords

make_trees() {
    python3 - "$work" "$trees" <<'PY'
import os, random, sys
work, which = sys.argv[1], sys.argv[2]
rng = random.Random(20240601)
words = ("menu folder archive selected password entry window copy paste convert image icon "
         "terminal template digest colour document open the of and to in with").split()
def text(size):
    out, n = [], 0
    while n < size:
        line = " ".join(rng.choice(words) for _ in range(rng.randint(4, 14))) + f" {rng.randint(0, 99999)}\n"
        out.append(line); n += len(line)
    return "".join(out)[:size].encode()
if which in ("files", "both"):
    root = os.path.join(work, "files", "tree")
    total = 0
    for i in range(4000):
        folder = os.path.join(root, f"d{i % 40:02d}", f"s{i % 7}")
        os.makedirs(folder, exist_ok=True)
        kind = rng.random()
        size = int(rng.expovariate(1 / 30000)) + 10
        data = rng.randbytes(size) if kind < 0.35 else text(size)
        with open(os.path.join(folder, f"f{i:05d}.{'bin' if kind < 0.35 else 'txt'}"), "wb") as f:
            f.write(data)
        total += size
    big = os.path.join(root, "big")
    os.makedirs(big, exist_ok=True)
    chunk = text(1 << 20)
    for name, count in (("log-a.txt", 30), ("log-b.txt", 25)):
        with open(os.path.join(big, name), "wb") as f:
            for _ in range(count):
                f.write(chunk)
                f.write(rng.randbytes(4096))
        total += count * ((1 << 20) + 4096)
    with open(os.path.join(big, "media.bin"), "wb") as f:
        f.write(rng.randbytes(25 << 20))
    total += 25 << 20
    for i in range(20):
        os.makedirs(os.path.join(root, "empty", f"e{i}"), exist_ok=True)
    print(f"tree files: {total / 1e6:.1f} MB in 4003 files")
if which in ("one", "both"):
    root = os.path.join(work, "one", "tree")
    os.makedirs(root, exist_ok=True)
    chunks = [text(1 << 20) for _ in range(8)]
    with open(os.path.join(root, "one.bin"), "wb") as f:
        for i in range(1000):
            f.write(chunks[i % 8] if i % 5 else rng.randbytes(1 << 20))
            f.write(rng.randbytes(24 << 10))
    print(f"tree one: {1000 * ((1 << 20) + (24 << 10)) / 1e6:.1f} MB in 1 file")
PY
    sync
}

# Runs a command under /usr/bin/time -v; prints "wall_seconds cpu_seconds peak_kib".
measure() {
    local report="$work/time.txt"
    /usr/bin/time -v -o "$report" "$@" >/dev/null
    local wall cpu rss
    wall=$(awk -F': ' '/Elapsed \(wall clock\)/ {print $2}' "$report" |
        awk -F: '{ if (NF == 3) print $1 * 3600 + $2 * 60 + $3; else print $1 * 60 + $2 }')
    cpu=$(awk -F': ' '/(User|System) time/ {sum += $2} END {print sum}' "$report")
    rss=$(awk -F': ' '/Maximum resident set size/ {print $2}' "$report")
    echo "$wall $cpu $rss"
}

median() { sort -g | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

bench_tree() {
    local name="$1" dir="$work/$1"
    : >"$dir/px.txt"
    : >"$dir/7z.txt"
    for round in $(seq "$rounds"); do
        rm -f "$dir/px.zip" "$dir/7z.zip"
        # Alternate which writer goes first, so neither always meets a warmer cache.
        if [ $((round % 2)) -eq 1 ]; then
            (cd "$dir" && measure "$tool" "$dir/px.zip" "$dir/tree" "$password") >>"$dir/px.txt"
            (cd "$dir" && measure "$sevenzip" a -tzip -mem=AES256 "-p$password" "$dir/7z.zip" tree) >>"$dir/7z.txt"
        else
            (cd "$dir" && measure "$sevenzip" a -tzip -mem=AES256 "-p$password" "$dir/7z.zip" tree) >>"$dir/7z.txt"
            (cd "$dir" && measure "$tool" "$dir/px.zip" "$dir/tree" "$password") >>"$dir/px.txt"
        fi
    done
    "$sevenzip" t "-p$password" "$dir/px.zip" >/dev/null || { echo "7-Zip rejects pxmenu's archive" >&2; exit 1; }
    local pt pc pr st sc sr ps ss
    pt=$(awk '{print $1}' "$dir/px.txt" | median); pc=$(awk '{print $2}' "$dir/px.txt" | median)
    pr=$(awk '{print $3}' "$dir/px.txt" | median)
    st=$(awk '{print $1}' "$dir/7z.txt" | median); sc=$(awk '{print $2}' "$dir/7z.txt" | median)
    sr=$(awk '{print $3}' "$dir/7z.txt" | median)
    ps=$(stat -c %s "$dir/px.zip"); ss=$(stat -c %s "$dir/7z.zip")
    awk -v name="$name" -v rounds="$rounds" -v pt="$pt" -v st="$st" -v pc="$pc" -v sc="$sc" \
        -v ps="$ps" -v ss="$ss" -v pr="$pr" -v sr="$sr" -v load="$(cut -d' ' -f1-3 /proc/loadavg)" 'BEGIN {
        printf "tree %s, medians of %d rounds (load average %s)\n", name, rounds, load
        printf "  %-8s %9s %9s %14s %14s\n", "writer", "wall (s)", "CPU (s)", "size (bytes)", "peak RSS (MB)"
        printf "  %-8s %9.2f %9.2f %14d %14.1f\n", "pxmenu", pt, pc, ps, pr / 1024
        printf "  %-8s %9.2f %9.2f %14d %14.1f\n", "7-Zip", st, sc, ss, sr / 1024
        printf "  time ratio (pxmenu / 7-Zip): %.2f wall, %.2f CPU\n", pt / st, pc / sc
        printf "  size ratio (pxmenu / 7-Zip): %.4f\n", ps / ss
    }'
    rm -f "$dir/px.zip" "$dir/7z.zip"
}

make_trees
echo "cores: $(nproc)"
[ "$trees" = one ] || bench_tree files
[ "$trees" = files ] || bench_tree one
