#!/usr/bin/env bash
# Times the iOS icon set (18 PNG files, 20 to 1024 pixels, plus Contents.json) made from one
# 1024 x 1024 PNG by the project's exporter against an ImageMagick loop making the same sizes
# ("convert SRC -resize WxH OUT.png" per file). The two run alternately, RUNS times each, and
# the medians of elapsed time are compared; CPU seconds are printed beside them, since on a busy
# machine the elapsed times also measure the other work.
# Usage: bench/iconset_vs_magick.sh [path/to/iconset_tool]
# Build the tool first, in release mode, for example:
#   cmake -S . -B build/bench-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DPX_BUILD_BENCH=ON
#   cmake --build build/bench-release --target iconset_tool
# Goal: faster than ImageMagick (ratio above 1).
set -euo pipefail

tool=${1:-${BUILD_DIR:-build/bench-release}/bench/iconset_tool}
runs=${RUNS:-7}
magick=${MAGICK_CONVERT:-/usr/bin/convert}
[[ -x $tool ]] || { echo "iconset_tool not found at $tool" >&2; exit 2; }
[[ -x $magick ]] || { echo "ImageMagick's convert not found at $magick" >&2; exit 2; }

work=$(mktemp -d /tmp/pxmenu-iconset-bench.XXXXXX)
trap 'rm -rf -- "$work"' EXIT
source=$work/logo.png
# A picture with detail everywhere, so neither side can take a shortcut through flat colour.
vips gaussnoise "$work/noise.v" 1024 1024 --mean 128 --sigma 60
vips bandjoin "$work/noise.v $work/noise.v $work/noise.v" "$work/rgb.v"
vips cast "$work/rgb.v" "$work/rgb8.v" uchar
vips copy "$work/rgb8.v" "$source" --interpretation srgb

# The iOS files: name and pixel size.
files=(
    iPadApp_76x76@2x.png:152 iPadApp_76x76.png:76
    iPadNotifications_20x20@2x.png:40 iPadNotifications_20x20.png:20
    iPadSpootlight5_29x29@2x.png:58 iPadSpootlight5_29x29.png:29
    iPadSpootlight7_40x40@2x.png:80 iPadSpootlight7_40x40.png:40
    iPadProApp_83.5x83.5@2x.png:167
    iPhoneApp_60x60@3x.png:180 iPhoneApp_60x60@2x.png:120
    iPhoneNotification_20x20@3x.png:60 iPhoneNotification_20x20@2x.png:40
    iPhoneSpootlight5_29x29@3x.png:87 iPhoneSpootlight5_29x29@2x.png:58
    iPhoneSpootlight7_40x40@3x.png:120 iPhoneSpootlight7_40x40@2x.png:80
    store_1024x1024.png:1024
)

magick_set() {
    local out=$work/magick
    rm -rf -- "$out" && mkdir -p -- "$out"
    for entry in "${files[@]}"; do
        local pixels=${entry##*:}
        "$magick" "$source" -resize "${pixels}x${pixels}" "$out/${entry%%:*}"
    done
}

ours_set() {
    rm -rf -- "$work/logo(iOS)"
    "$tool" "$source" 1
}

# Runs the function once; prints "elapsed cpu" in seconds (cpu counts the children too).
timed() {
    local spent
    spent=$( { TIMEFORMAT='%3R %3U %3S'; time "$@"; } 2>&1 )
    awk -v t="$spent" 'BEGIN { split(t, p, " "); printf "%.3f %.3f\n", p[1], p[2] + p[3] }'
}

median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

# Both sides must have made every file at its size.
check() {
    local folder=$1 entry size
    for entry in "${files[@]}"; do
        size=$(vipsheader -f width "$folder/${entry%%:*}")x$(vipsheader -f height "$folder/${entry%%:*}")
        [[ $size == "${entry##*:}x${entry##*:}" ]] || { echo "$folder/${entry%%:*}: $size" >&2; return 1; }
    done
}

printf 'load average: %s\n' "$(cut -d' ' -f1-3 /proc/loadavg)"
: >"$work/ours" && : >"$work/theirs"
for ((i = 0; i < runs; i++)); do
    timed ours_set >>"$work/ours"
    timed magick_set >>"$work/theirs"
done
check "$work/logo(iOS)/AppIcon.appiconset"
check "$work/magick"
ours=$(cut -d' ' -f1 "$work/ours" | median)
theirs=$(cut -d' ' -f1 "$work/theirs" | median)
ours_cpu=$(cut -d' ' -f2 "$work/ours" | median)
theirs_cpu=$(cut -d' ' -f2 "$work/theirs" | median)
ratio=$(awk -v a="$theirs" -v b="$ours" 'BEGIN { printf "%.2f", a / b }')
printf '%-10s %10s %12s %10s %12s %7s\n' set "ours (s)" "magick (s)" "ours cpu" "magick cpu" ratio
printf '%-10s %10.3f %12.3f %10.3f %12.3f %6sx %s\n' "iOS (18)" "$ours" "$theirs" "$ours_cpu" \
    "$theirs_cpu" "$ratio" "$(awk -v r="$ratio" 'BEGIN { print (r > 1) ? "goal met" : "goal MISSED" }')"
awk -v r="$ratio" 'BEGIN { exit (r > 1) ? 0 : 1 }'
