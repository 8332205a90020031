#!/usr/bin/env bash
# Installs every build and test dependency on Debian 12. Idempotent and quiet when all is there.
set -euo pipefail

packages=(
    build-essential cmake ninja-build pkg-config ccache clang libclang-rt-14-dev clang-format
    gettext libplist-dev libglib2.0-dev libcli11-dev libfmt-dev nlohmann-json3-dev
    libgtest-dev libgmock-dev googletest libbenchmark-dev python3
    libdeflate-dev zlib1g-dev libssl-dev 7zip libarchive-tools unzip time libgdk-pixbuf-2.0-dev
    libvips-dev libqpdf-dev libpoppler-cpp-dev libvips-tools imagemagick poppler-utils qpdf
    python3-pil file
    qt6-base-dev libqt6svg6 adwaita-icon-theme fonts-wqy-microhei xvfb xdotool xclip dbus dbus-x11
    # The file-manager plugins, and the file managers with a display for their smoke tests.
    libnautilus-extension-dev libnemo-extension-dev libcaja-extension-dev libthunarx-3-dev
    libkf5kio-dev extra-cmake-modules
    nautilus nemo caja thunar dolphin xvfb xdotool dbus-x11
    dpkg-dev lintian appstream desktop-file-utils bash-completion man-db strace
)

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "installing: ${missing[*]}"
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
