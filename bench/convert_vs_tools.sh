#!/usr/bin/env bash
# Times image conversion of a 6000 x 4000 JPEG to PNG, TIFF and JPEG, side by side: our
# conversion (the real command line, `pxmenu run --tag ...` on the "Convert to" target, so the
# time includes starting the program and building the menu), `vips copy` with the same encoder
# settings, and ImageMagick's `convert`. The three run alternately, RUNS times each, and the
# medians are compared.
# Usage: bench/convert_vs_tools.sh [path/to/pxmenu]
# TARGETS limits the targets timed (default "PNG TIFF JPEG"); WORK_DIR is where the images go
# (default /tmp; /dev/shm takes the disk out of the comparison).
# BUILD_DIR picks the build whose pxmenu is used when no path is given (default
# build/bench-release); build it first, for example:
#   cmake -S . -B build/bench-release -G Ninja -DCMAKE_BUILD_TYPE=Release
#   cmake --build build/bench-release --target pxmenu
# Goals: at most 1.1 times the time of `vips copy`, and faster than `convert`. Times are elapsed
# seconds (what a user waits for); CPU seconds are printed beside them, since on a busy machine
# the elapsed times also measure the other work.
set -euo pipefail

build_dir=${BUILD_DIR:-build/bench-release}
pxmenu=${1:-$build_dir/hosts/cli/pxmenu}
runs=${RUNS:-5}
[[ -x $pxmenu ]] || { echo "pxmenu not found at $pxmenu" >&2; exit 2; }
for tool in vips convert identify python3; do
    command -v "$tool" >/dev/null || { echo "$tool is needed" >&2; exit 2; }
done
pxmenu=$(realpath -- "$pxmenu")

work=$(mktemp -d "${WORK_DIR:-/tmp}/pxmenu-convert-bench.XXXXXX")
trap 'rm -rf -- "$work"' EXIT
export HOME=$work/home XDG_CONFIG_HOME=$work/home/.config XDG_DATA_HOME=$work/home/.local/share \
    XDG_CACHE_HOME=$work/home/.cache XDG_RUNTIME_DIR=$work/run
mkdir -p "$HOME" "$XDG_RUNTIME_DIR" "$work/src" "$work/out"
chmod 700 "$XDG_RUNTIME_DIR"
"$pxmenu" setup >/dev/null
"$pxmenu" config set right "Convert to" disabled false >/dev/null
"$pxmenu" config set pref "is reviewed" true >/dev/null

# A photo-like source: smooth noise in three bands, saved as a quality-90 JPEG.
source=$work/src/photo.jpg
vips perlin "$work/r.v" 6000 4000 --cell-size 300
vips perlin "$work/g.v" 6000 4000 --cell-size 140
vips perlin "$work/b.v" 6000 4000 --cell-size 60
vips bandjoin "$work/r.v $work/g.v $work/b.v" "$work/rgb.v"
vips linear "$work/rgb.v" "$work/rgb8.v" 127 128 --uchar
vips jpegsave "$work/rgb8.v" "$source" --Q 90
rm -f "$work"/*.v
cat -- "$source" >/dev/null

# The tag of a "Convert to" target for the source, from the menu as JSON.
tag_of() {
    "$pxmenu" menu --json --target "$work/src" -- "$source" | python3 -c '
import json, sys
for entry in json.load(sys.stdin):
    if entry["key"] == "Convert to":
        for child in entry["children"]:
            if child["key"] == sys.argv[1]:
                print(child["tag"])' "$1"
}

# Runs the command once; prints "elapsed cpu" in seconds.
timed() {
    local spent
    spent=$( { TIMEFORMAT='%3R %3U %3S'; time "$@" >/dev/null 2>&1; } 2>&1 )
    awk -v t="$spent" 'BEGIN { split(t, p, " "); printf "%.3f %.3f\n", p[1], p[2] + p[3] }'
}

median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

ours() { "$pxmenu" run --tag "$1" --target "$work/src" --ui "script:/dev/null" -- "$source"; }

printf 'load average: %s\n' "$(cut -d' ' -f1-3 /proc/loadavg)"
printf '%-5s %9s %9s %9s %9s %9s %9s %10s %12s\n' target "ours (s)" "vips (s)" "magick (s)" \
    "ours cpu" "vips cpu" "mgk cpu" "ours/vips" "ours/magick"
status=0
# target key : extension : vips save options : ImageMagick options
for row in "PNG:png:[compression=6]:-quality 75" "TIFF:tiff:[compression=none]:-compress none" \
    "JPEG:jpeg:[Q=85]:-quality 85"; do
    IFS=: read -r key ext vips_options magick_options <<<"$row"
    [[ " ${TARGETS:-PNG TIFF JPEG} " == *" $key "* ]] || continue
    tag=$(tag_of "$key")
    [[ -n $tag ]] || { echo "no $key target in the menu" >&2; exit 1; }
    : >"$work/t.ours" && : >"$work/t.vips" && : >"$work/t.magick"
    for ((i = 0; i < runs; i++)); do
        timed ours "$tag" >>"$work/t.ours"
        timed vips copy "$source" "$work/out/vips.$ext$vips_options" >>"$work/t.vips"
        # shellcheck disable=SC2086 # the options are words
        timed convert "$source" $magick_options "$work/out/magick.$ext" >>"$work/t.magick"
    done
    produced=$work/src/photo.$ext
    [[ $(identify -format '%wx%h' "$produced") == 6000x4000 ]] ||
        { echo "$key: our output is not a 6000x4000 image" >&2; status=1; }
    for side in ours vips magick; do
        declare "${side}_s=$(cut -d' ' -f1 "$work/t.$side" | median)"
        declare "${side}_cpu=$(cut -d' ' -f2 "$work/t.$side" | median)"
    done
    to_vips=$(awk -v a="$ours_s" -v b="$vips_s" 'BEGIN { printf "%.2f", a / b }')
    to_magick=$(awk -v a="$ours_s" -v b="$magick_s" 'BEGIN { printf "%.2f", a / b }')
    verdict=$(awk -v v="$to_vips" -v m="$to_magick" \
        'BEGIN { print (v <= 1.1 && m < 1) ? "met" : "MISSED" }')
    [[ $verdict == met ]] || status=1
    printf '%-5s %9.2f %9.2f %9.2f %9.2f %9.2f %9.2f %9sx %11sx %s\n' "$key" "$ours_s" "$vips_s" \
        "$magick_s" "$ours_cpu" "$vips_cpu" "$magick_cpu" "$to_vips" "$to_magick" "$verdict"
    rm -f -- "$produced" "$work"/out/*
done
echo "sizes (bytes): source $(stat -c %s "$source")"
exit $status
