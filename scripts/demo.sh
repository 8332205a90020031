#!/usr/bin/env bash
# Sets up, builds, seeds the factory configuration and prints the menu for a sample selection.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)" --target pxmenu
bin=build/release/hosts/cli/pxmenu
sample=$(mktemp -d)
printf 'hello\n' >"$sample/notes.txt"
"$bin" setup
echo "Menu for $sample/notes.txt:"
"$bin" menu --target "$sample" -- "$sample/notes.txt"
