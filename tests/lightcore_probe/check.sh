#!/usr/bin/env bash
# The light-core probe builds a menu, and neither it nor any library it loads is a toolkit, an
# image, PDF or archive library, or OpenSSL.
set -euo pipefail
probe=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
touch "$scratch/report.txt"
count=$(XDG_CONFIG_HOME=$scratch XDG_DATA_HOME=$scratch "$probe" "$scratch" "$scratch/report.txt")
[ "$count" -gt 5 ] || { echo "the probe built only $count entries"; exit 1; }
forbidden='libQt|libgtk|libvips|libpoppler|libqpdf|libzip|libssl|libcrypto|libarchive'
if ldd "$probe" | grep -E "$forbidden"; then
    echo "the light core loads a library it must not"
    exit 1
fi
echo "light core: $count entries; $(ldd "$probe" | wc -l) libraries, none forbidden"
