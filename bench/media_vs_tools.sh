#!/usr/bin/env bash
# The media tools against their reference tools in one run: image conversion (vips, ImageMagick),
# the iOS icon set (ImageMagick), PDF merge and extraction (qpdf, pdftoppm) and the digests
# (coreutils). Each script prints its own table of ratios; the exit status is 1 when any missed
# its goal. Build the release tools first:
#   cmake -S . -B build/bench-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DPX_BUILD_BENCH=ON
#   cmake --build build/bench-release --target pxmenu iconset_tool pdf_tool digest_tool
# BUILD_DIR picks another build folder; RUNS the runs per tool (each script's default otherwise).
set -uo pipefail
cd "$(dirname "$0")/.."
export BUILD_DIR=${BUILD_DIR:-build/bench-release}

status=0
run() {
    printf '\n== %s\n' "$*"
    "$@" || status=1
}
run bench/convert_vs_tools.sh
run bench/iconset_vs_magick.sh
run bench/pdf_vs_tools.sh
run bench/digest_vs_coreutils.sh "$BUILD_DIR/bench/digest_tool"
exit $status
