#!/usr/bin/env bash
# The layer check passes the real tree and refuses a copy of it with one include planted the
# wrong way (a support header including a config header) or a core file including a Linux
# implementation.
set -euo pipefail
source_dir=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
check() {
    printf 'include(%s/cmake/PxLayers.cmake)\npx_check_layers(%s)\n' "$source_dir" "$1" \
        > "$scratch/check.cmake"
    cmake -P "$scratch/check.cmake" > "$scratch/out" 2>&1
}
check "$source_dir/src" || { cat "$scratch/out"; echo "the real tree fails the check"; exit 1; }
for planted in 'support/Planted.h:config/PXMenuItem.h' 'extension/Planted.h:platform/linux/UserStore.h'; do
    rm -rf "$scratch/src"
    cp -r "$source_dir/src" "$scratch/src"
    printf '#include "%s"\n' "${planted#*:}" > "$scratch/src/${planted%%:*}"
    if check "$scratch/src"; then
        echo "a planted ${planted%%:*} including ${planted#*:} passed the check"
        exit 1
    fi
    grep -q "${planted%%:*} includes ${planted#*:}" "$scratch/out" || { cat "$scratch/out"; exit 1; }
done
echo "the layer check refuses both planted includes"
