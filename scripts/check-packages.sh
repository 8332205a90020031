#!/usr/bin/env bash
# Builds the Debian packages and checks them as a user would get them: lists their contents,
# runs lintian, unpacks them into a scratch root with no build tree in reach and runs the
# unpacked pxmenu there (version, setup, a menu, an image conversion through the installed image
# module, translations), validates the desktop files, the metainfo, the manual page and the
# completion, checks that no file belongs to two packages and that removing a plugin package
# leaves the others working.
#   scripts/check-packages.sh [--no-build]    (--no-build: check build/packages/ as it is)
set -euo pipefail
cd "$(dirname "$0")/.."
source=$PWD

[ "${1:-}" = --no-build ] || scripts/build-packages.sh
mapfile -t debs < <(ls build/packages/*.deb)
[ ${#debs[@]} -gt 0 ] || { echo "no packages in build/packages" >&2; exit 1; }

scratch=$(mktemp -d)
hidden=build/release/lib.hidden-while-checking
cleanup() {
    [ -d "$hidden" ] && mv "$hidden" build/release/lib
    rm -rf "$scratch"
}
trap cleanup EXIT
fail() {
    echo "FAILED: $*" >&2
    exit 1
}
step() { echo "== $*"; }

package_of() { dpkg-deb -f "$1" Package; }
# The files (not folders) a package installs, as absolute paths.
files_of() { dpkg-deb -c "$1" | awk '$1 !~ /^d/ {print $6}' | sed -e 's|^\./|/|'; }

step "contents"
for deb in "${debs[@]}"; do
    echo "-- $(basename "$deb"): $(dpkg-deb -f "$deb" Depends)"
    dpkg-deb -c "$deb"
done

step "lintian"
lintian --fail-on error --tag-display-limit 0 "${debs[@]}" || fail "lintian reports errors"

step "no file in two packages"
for deb in "${debs[@]}"; do
    files_of "$deb"
done | sort | uniq -d >"$scratch/shared"
[ ! -s "$scratch/shared" ] || fail "files in more than one package: $(cat "$scratch/shared")"

step "plugins depend on pxmenu of the same version"
main=$(ls build/packages/pxmenu_*.deb)
version=$(dpkg-deb -f "$main" Version)
for deb in "${debs[@]}"; do
    [ "$deb" = "$main" ] && continue
    dpkg-deb -f "$deb" Depends | grep -q "pxmenu (= $version)" ||
        fail "$(package_of "$deb") does not depend on pxmenu (= $version)"
done

step "unpacked into a scratch root, the build tree's module hidden"
root=$scratch/root
for deb in "${debs[@]}"; do
    dpkg-deb -x "$deb" "$root"
done
[ -d build/release/lib ] && mv build/release/lib "$hidden"

home=$scratch/home
work=$scratch/work
traces=$scratch/traces
mkdir -p "$home" "$work" "$traces"
# Every run's opened files are traced where strace may trace, to show that nothing comes from
# the source or build tree.
tracer=()
if strace -qq -o /dev/null true 2>/dev/null; then
    tracer=(strace -f -qq -e trace=openat,open -o)
else
    echo "(strace cannot trace here: the opened files are not checked)"
fi
runs=0
# The unpacked program, from the scratch root, with a clean environment of its own.
pxmenu() {
    runs=$((runs + 1))
    local trace=()
    [ ${#tracer[@]} -eq 0 ] || trace=("${tracer[@]}" "$traces/$runs")
    (cd "$work" && env -i PATH=/usr/bin:/bin HOME="$home" LANG=C.UTF-8 \
        XDG_CONFIG_HOME="$home/config" XDG_DATA_HOME="$home/data" \
        XDG_CACHE_HOME="$home/cache" XDG_RUNTIME_DIR="$home/runtime" \
        ${PXMENU_EXTRA_ENV:-} "${trace[@]}" "$root/usr/bin/pxmenu" "$@")
}
run_checks() {
    [ "$(pxmenu --version)" = "${version%-*}" ] || fail "pxmenu --version: $(pxmenu --version)"
    pxmenu setup
    printf 'hello\n' >"$work/notes.txt"
    pxmenu menu --target "$work" -- "$work/notes.txt" >"$scratch/menu"
    grep -q "Copy Path" "$scratch/menu" || fail "the menu has no Copy Path: $(cat "$scratch/menu")"
    # The Chinese catalogue comes from the unpacked share/locale.
    PXMENU_EXTRA_ENV=LANG=zh_CN.UTF-8 pxmenu menu --target "$work" -- "$work/notes.txt" \
        >"$scratch/menu.zh"
    ! cmp -s "$scratch/menu" "$scratch/menu.zh" || fail "no translated menu"
}
run_checks

step "an image conversion runs the installed image code"
pxmenu config set right "Convert to" disabled false
convert -size 8x6 xc:red "$work/red.png"
request=(--target "$work" -- "$work/red.png")
tag=$(pxmenu menu --json "${request[@]}" | python3 -c '
import json, sys
for entry in json.load(sys.stdin):
    if entry["key"] == "Convert to":
        print(next(c["tag"] for c in entry["children"] if c["key"] == "JPEG"))')
: >"$scratch/answers"
# The conversion runs in the worker beside the module; the loader writes one log per process.
PXMENU_EXTRA_ENV="LD_DEBUG=files LD_DEBUG_OUTPUT=$scratch/loads" pxmenu run --tag "$tag" \
    --ui "script:$scratch/answers" "${request[@]}" >"$scratch/transcript"
cat "$scratch"/loads.* >"$scratch/loads" 2>/dev/null || true
grep -q "$root/usr/lib/\(.*/\)\?pxmenu/pxmenu-imaging\(.so\|-worker\)" "$scratch/loads" ||
    fail "the module was not loaded from the scratch root: $(grep -m3 imaging "$scratch/loads")"
[ "$(identify -format %m "$work/red.jpeg")" = JPEG ] || fail "no JPEG made"

step "a new file from the installed templates"
: >"$scratch/answers"
rtf=$(pxmenu menu --json --target "$work" -- "$work/notes.txt" | python3 -c '
import json, sys
for entry in json.load(sys.stdin):
    if entry["key"] == "New File":
        print(next(c["tag"] for c in entry["children"] if c["key"] == "rtf"))')
pxmenu run --tag "$rtf" --ui "script:$scratch/answers" --target "$work" -- "$work/notes.txt"
cmp "$work/Untitled.rtf" "$root/usr/share/pxmenu/templates/Untitled.rtf" || fail "no blank RTF"

if [ ${#tracer[@]} -gt 0 ]; then
    step "nothing opened from the source or build tree"
    opened=$(cat "$traces"/* | grep -v ' = -1 ' | grep -o '"[^"]*"' | tr -d '"' | sort -u)
    ! grep "^$source/" <<<"$opened" || fail "files opened from the tree"
    grep -q "^$root/usr/share/locale/zh_CN/LC_MESSAGES/pxmenu.mo$" <<<"$opened" ||
        fail "the Chinese catalogue was not read from the scratch root"
fi

step "desktop files, metainfo, manual page"
desktop-file-validate "$root"/usr/share/applications/*.desktop
metainfo=$(ls "$root"/usr/share/metainfo/*.metainfo.xml)
appstreamcli validate --no-net "$metainfo"
id=$(basename "$metainfo" .metainfo.xml)
grep -q "<id>$id</id>" "$metainfo" || fail "the metainfo file is not named after its id"
# The review prompt's link is made from the same id (the optimiser scatters the text in the binary).
grep -q "\"appstream:$id\"" build/release/generated/support/BuildConfig.h ||
    fail "the review prompt does not open appstream:$id"
[ -f "$root/usr/share/icons/hicolor/scalable/apps/pxmenu.svg" ] || fail "no application icon"
for page in "$root"/usr/share/man/man1/*.gz; do
    warnings=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l "$page" 2>&1 >/dev/null)
    [ -z "$warnings" ] || fail "manual page $(basename "$page"): $warnings"
done

step "bash completion"
PXMENU_ROOT=$root PXMENU_WORK=$work PXMENU_HOME=$home \
    bash "$source/scripts/check-completion.sh" "$root/usr/share/bash-completion/completions/pxmenu"

step "removing each plugin package leaves the others working"
for deb in "${debs[@]}"; do
    [ "$deb" = "$main" ] && continue
    files_of "$deb" | while read -r file; do rm -f "$root$file"; done
    for other in "${debs[@]}"; do
        [ "$other" = "$deb" ] && continue
        files_of "$other" | while read -r file; do
            [ -e "$root$file" ] || fail "removing $(package_of "$deb") took $file"
        done
    done
    run_checks
    echo "without $(package_of "$deb"): the others are whole and pxmenu works"
    dpkg-deb -x "$deb" "$root"
done
[ ${#debs[@]} -gt 1 ] || echo "(no plugin packages were built)"

echo "packages checked: ${#debs[@]}"
