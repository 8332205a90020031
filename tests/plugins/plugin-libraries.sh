#!/bin/sh
# What a plugin brings into its file manager beyond the libraries the file manager loads
# itself: never Qt 6, the image, PDF or archive libraries, nor OpenSSL.
#   plugin-libraries.sh PLUGIN HOST_PROGRAM
plugin=$1
host=$(command -v "$2")
libraries() { ldd "$1" 2>/dev/null | awk '/=>/ {print $1}' | sort -u; }
ldd "$plugin" >/dev/null || exit 1
own=$(mktemp)
trap 'rm -f "$own"' EXIT
[ -n "$host" ] && libraries "$host" >"$own"
added=$(libraries "$plugin" | comm -23 - "$own")
echo "libraries the plugin adds:" $added
forbidden=$(printf '%s\n' $added | grep -E 'libQt6|libvips|libpoppler|libqpdf|libzip|libssl|libcrypto')
[ -z "$forbidden" ] || { echo "forbidden:" $forbidden; exit 1; }
