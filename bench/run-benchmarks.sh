#!/usr/bin/env bash
# Configures the release build, builds the benchmark programs (the bench/*.cpp files that use
# Google Benchmark) and runs each of them five times, printing mean, median and deviation.
#
#   bench/run-benchmarks.sh [BENCHMARK_FILTER]
#
# BUILD_DIR chooses the build folder (default: the release preset's build/release); a filter
# is passed on as --benchmark_filter.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$root/build/release}
jobs=${JOBS:-2}

cd "$root"
cmake --preset release -B "$build" -DPX_BUILD_BENCH=ON >/dev/null

programs=()
for source in bench/*.cpp; do
    grep -q '<benchmark/benchmark.h>' "$source" || continue
    programs+=("$(basename "$source" .cpp)")
done
[ ${#programs[@]} -gt 0 ] || { echo "no benchmark programs in bench/" >&2; exit 1; }

cmake --build "$build" -j "$jobs" --target "${programs[@]}"

args=(--benchmark_repetitions=5 --benchmark_report_aggregates_only=true)
[ $# -gt 0 ] && args+=(--benchmark_filter="$1")
for program in "${programs[@]}"; do
    echo "== $program"
    "$build/bench/$program" "${args[@]}"
done
