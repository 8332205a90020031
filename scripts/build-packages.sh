#!/usr/bin/env bash
# Builds the Debian packages: configures the release build for the /usr prefix with Debian's
# hardening flags, builds it, and has CPack write one .deb per component into build/packages/.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
jobs=${PX_JOBS:-$(nproc)}

# Debian's hardening flags, without its debugging and optimisation levels (the release build
# type sets those; CPack strips the binaries).
buildflag() {
    DEB_BUILD_MAINT_OPTIONS=hardening=+all dpkg-buildflags --get "$1" |
        sed -e 's/ *-g\b//; s/ *-O2\b//; s/ *-ffile-prefix-map=[^ ]*//'
}
cflags="$(buildflag CPPFLAGS) $(buildflag CFLAGS)"
cxxflags="$(buildflag CPPFLAGS) $(buildflag CXXFLAGS)"
ldflags="$(buildflag LDFLAGS)"

launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
cmake --preset release "${launcher[@]}" -DCMAKE_INSTALL_PREFIX=/usr \
    -DCMAKE_C_FLAGS="$cflags" -DCMAKE_CXX_FLAGS="$cxxflags" \
    -DCMAKE_EXE_LINKER_FLAGS="$ldflags" -DCMAKE_SHARED_LINKER_FLAGS="$ldflags" \
    -DCMAKE_MODULE_LINKER_FLAGS="$ldflags" >/dev/null
# Only what the packages hold: the programs, the module, the catalogues and the plugins.
cmake --build --preset release -j "$jobs" --target px_packaged

rm -rf build/packages
(cd build/release && cpack -G DEB -B "$PWD/../packages" >/dev/null)
rm -rf build/packages/_CPack_Packages
ls -1 build/packages/*.deb
