#!/usr/bin/env bash
# Sets up and runs every test: the debug build, then the address/undefined sanitizer build, then
# the Debian packages built from the release build and checked unpacked.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
jobs=$(nproc)
# A compiler cache, keyed on paths relative to the checkout, so another checkout reuses it.
launcher=()
if command -v ccache >/dev/null; then
    export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
fi
for preset in debug asan; do
    cmake --preset "$preset" "${launcher[@]}" >/dev/null
    cmake --build --preset "$preset" -j "$jobs"
    ctest --preset "$preset" -j "$jobs"
done
scripts/check-packages.sh
