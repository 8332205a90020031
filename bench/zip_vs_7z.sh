#!/usr/bin/env bash
# Times pxmenu's zip writer against 7-Zip on the same generated tree (about 200 MB in several
# thousand files, text and random data, some empty folders), both writing a zip archive with
# AES-256 and a password, and prints the wall and CPU time, size and peak memory of each and
# their ratios. Wall time is the figure that matters; CPU time stays meaningful on a busy machine.
#
#   bench/zip_vs_7z.sh [ZIP_TOOL]
# ZIP_TOOL defaults to a release build of bench/zip_tool in build/bench-release (built if absent).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
tool="${1:-}"
if [ -z "$tool" ]; then
    build="$root/build/bench-release"
    cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DPX_BUILD_TESTS=OFF \
        -DPX_BUILD_BENCH=ON >/dev/null
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

python3 - "$work/tree" <<'PY'
import os, random, sys
root = sys.argv[1]
rng = random.Random(20240601)
words = ("menu folder archive selected password entry window copy paste convert image icon "
         "terminal template digest colour document open the of and to in with").split()
def text(size):
    out, n = [], 0
    while n < size:
        line = " ".join(rng.choice(words) for _ in range(rng.randint(4, 14))) + f" {rng.randint(0, 99999)}\n"
        out.append(line); n += len(line)
    return "".join(out)[:size].encode()
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
print(f"tree: {total / 1e6:.1f} MB in {4003} files")
PY
sync

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

cd "$work"
read -r px_time px_cpu px_rss < <(measure "$tool" "$work/px.zip" "$work/tree" "$password")
read -r sz_time sz_cpu sz_rss < <(measure "$sevenzip" a -tzip -mem=AES256 "-p$password" "$work/7z.zip" tree)
"$sevenzip" t "-p$password" "$work/px.zip" >/dev/null || { echo "7-Zip rejects pxmenu's archive" >&2; exit 1; }
px_size=$(stat -c %s "$work/px.zip")
sz_size=$(stat -c %s "$work/7z.zip")

awk -v pt="$px_time" -v st="$sz_time" -v pc="$px_cpu" -v sc="$sz_cpu" -v ps="$px_size" \
    -v ss="$sz_size" -v pr="$px_rss" -v sr="$sz_rss" 'BEGIN {
    printf "%-8s %9s %9s %14s %14s\n", "writer", "wall (s)", "CPU (s)", "size (bytes)", "peak RSS (MB)"
    printf "%-8s %9.2f %9.2f %14d %14.1f\n", "pxmenu", pt, pc, ps, pr / 1024
    printf "%-8s %9.2f %9.2f %14d %14.1f\n", "7-Zip", st, sc, ss, sr / 1024
    printf "time ratio (pxmenu / 7-Zip): %.2f wall, %.2f CPU\n", pt / st, pc / sc
    printf "size ratio (pxmenu / 7-Zip): %.4f\n", ps / ss
}'
