#!/usr/bin/env bash
# Sets up and runs every test: the debug build, then the address/undefined sanitizer build, then
# the Debian packages built from the release build and checked unpacked.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
jobs=$(nproc)
for preset in debug asan; do
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" -j "$jobs"
    ctest --preset "$preset" -j "$jobs"
done
scripts/check-packages.sh
