#!/usr/bin/env bash
# Times the PDF tools against qpdf and pdftoppm on generated documents, side by side in one run:
#   merge:   four documents of 60 text-and-vector pages each, ours (pdf_tool merge, which calls
#            mergeToPDF) against `qpdf --empty --pages a.pdf b.pdf c.pdf d.pdf -- out.pdf`;
#   extract: 20 pages to PNG at 150 dpi, ours (pdf_tool extract) against `pdftoppm -png -r 150`.
# Wall-clock seconds, median of several alternating runs, since extraction runs pages in
# parallel threads; CPU seconds are shown beside them. The goal is judged on the whole runs of
# both programs, start-up included: pdf_tool, like pxmenu, loads the image library (libvips,
# poppler) only when the work needs it, so a merge of PDF documents never loads it. The time of
# our work alone (pdf_tool's "seconds" line) is shown too.
# Usage: [RUNS=5] [BUILD_DIR=build/bench-release] bench/pdf_vs_tools.sh [path/to/pdf_tool]
# Build the tool first, in release mode, for example:
#   cmake -S . -B build/bench-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DPX_BUILD_BENCH=ON
#   cmake --build build/bench-release --target pdf_tool
# Goals: merge within 1.2x qpdf's time, extraction within 0.5x pdftoppm's.
set -euo pipefail

tool=${1:-${BUILD_DIR:-build/bench-release}/bench/pdf_tool}
runs=${RUNS:-5}
[[ -x $tool ]] || { echo "pdf_tool not found at $tool" >&2; exit 2; }
for program in qpdf pdftoppm pdfinfo; do
    command -v "$program" >/dev/null || { echo "$program is not installed" >&2; exit 2; }
done

work=$(mktemp -d /tmp/pxmenu-pdf-bench.XXXXXX)
trap 'rm -rf -- "$work"' EXIT
for name in a b c d; do "$tool" sample "$work/$name.pdf" 60; done
"$tool" sample "$work/doc.pdf" 20

# Runs the command once; prints "wall cpu work" in seconds, where work is what our tool reports
# for the work itself (its "seconds" line), else the wall time.
timed() {
    local spent reported
    spent=$( { TIMEFORMAT='%3R %3U %3S'; time "$@" >"$work/out" 2>&1; } 2>&1 )
    reported=$(awk '/^seconds / { print $2 }' "$work/out")
    awk -v t="$spent" -v w="$reported" 'BEGIN { split(t, p, " "); printf "%.3f %.3f %.3f\n", p[1], p[2] + p[3], (w == "") ? p[1] : w }'
}

median() { sort -n | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

ours_merge() { rm -f -- "$work/Untitled.pdf"; "$tool" merge "$work"/{a,b,c,d}.pdf; }
qpdf_merge() { qpdf --empty --pages "$work"/{a,b,c,d}.pdf -- "$work/qpdf-out.pdf"; }
ours_extract() { rm -rf -- "$work/doc" "$work"/doc-*; "$tool" extract "$work/doc.pdf" PNG; }
poppler_extract() { rm -rf -- "$work/ppm"; mkdir "$work/ppm"; pdftoppm -png -r 150 "$work/doc.pdf" "$work/ppm/page"; }

# Alternates the two commands `runs` times; prints the medians "wall cpu work" of ours, then
# "wall cpu" of theirs.
compare() {
    local ours=$1 theirs=$2 i column
    : >"$work/ours.times"
    : >"$work/theirs.times"
    for ((i = 0; i < runs; i++)); do
        timed "$ours" >>"$work/ours.times"
        timed "$theirs" >>"$work/theirs.times"
    done
    for column in 1 2 3; do printf '%s ' "$(cut -d' ' -f$column "$work/ours.times" | median)"; done
    for column in 1 2; do printf '%s ' "$(cut -d' ' -f$column "$work/theirs.times" | median)"; done
}

check_outputs() {
    local merged theirs pages
    merged=$(pdfinfo "$work/Untitled.pdf" | awk '/^Pages:/ { print $2 }')
    theirs=$(pdfinfo "$work/qpdf-out.pdf" | awk '/^Pages:/ { print $2 }')
    [[ $merged == 240 && $theirs == 240 ]] || { echo "merge: $merged and $theirs pages, not 240" >&2; return 1; }
    pages=$(ls "$work/doc" | wc -l)
    [[ $pages == 20 && $(ls "$work/ppm" | wc -l) == 20 ]] || { echo "extract: $pages pages, not 20" >&2; return 1; }
}

printf '%-8s %10s %10s %10s %12s %11s %9s %9s %6s\n' task "ours wall" "ours cpu" "ours work" \
    "theirs wall" "theirs cpu" "(work)" "ratio" goal
status=0
for row in "merge ours_merge qpdf_merge 1.2" "extract ours_extract poppler_extract 0.5"; do
    read -r task ours theirs goal <<<"$row"
    read -r ours_wall ours_cpu ours_work theirs_wall theirs_cpu <<<"$(compare "$ours" "$theirs")"
    ratio=$(awk -v a="$ours_work" -v b="$theirs_wall" 'BEGIN { printf "%.2f", a / b }')
    wall_ratio=$(awk -v a="$ours_wall" -v b="$theirs_wall" 'BEGIN { printf "%.2f", a / b }')
    met=$(awk -v r="$wall_ratio" -v g="$goal" 'BEGIN { print (r <= g) ? "met" : "MISSED" }')
    [[ $met == met ]] || status=1
    printf '%-8s %9.3fs %9.3fs %9.3fs %11.3fs %10.3fs %8sx %8sx %5sx %s\n' "$task" "$ours_wall" \
        "$ours_cpu" "$ours_work" "$theirs_wall" "$theirs_cpu" "$ratio" "$wall_ratio" "$goal" "$met"
done
echo "ratio: whole runs, ours / theirs (wall clock); (work): our work alone / their whole run"
check_outputs || status=1
echo "cores: $(nproc), load average: $(cut -d' ' -f1-3 /proc/loadavg)"
exit $status
