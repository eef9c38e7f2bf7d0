#!/usr/bin/env bash
# Cross-builds Qt (qtbase from Debian's source package, the host Qt's version) as DLLs for 64-bit
# Windows, once: the installation is reused while the source version and this script are unchanged.
# Prints the installation folder on its last line.
set -euo pipefail
. "$(dirname "$0")/common.sh"

host_version=$(dpkg-query -W -f '${Version}' qt6-base-dev)
source_version=$(win_source_version qt6-base)
if [ "$host_version" != "$source_version" ]; then
    echo "windows: the host Qt ($host_version) and qt6-base's source ($source_version) differ;" \
        "a cross build needs both the same" >&2
    exit 1
fi

key=$(win_cache_key qt6-base "$0" "$TAVIK_WIN_TOOLCHAIN")
prefix="$TAVIK_WIN_CACHE/qt-$key"
if [ -f "$prefix/.done" ]; then
    echo "windows: Qt $source_version already built in $prefix" >&2
    echo "$prefix"
    exit 0
fi

work="$TAVIK_WIN_CACHE/work/qt-$key"
rm -rf "$work" "$prefix"
src=$(win_fetch_source qt6-base "$work/src")
mkdir -p "$work/build"
cd "$work/build"
# Debian's source drops wintab, so the tablet events go; sql, network, printing, concurrency and
# D-Bus are not used by the editor. The bundled third-party libraries are kept.
nice -n 10 "$src/configure" -prefix "$prefix" -xplatform win32-g++ \
    -device-option CROSS_COMPILE=$TAVIK_WIN_TRIPLE- -qt-host-path /usr \
    -release -nomake examples -nomake tests -no-opengl \
    -qt-zlib -qt-pcre -qt-harfbuzz -qt-libpng -qt-libjpeg -qt-freetype -qt-doubleconversion \
    -no-dbus -no-icu -no-feature-sql -no-feature-network -no-feature-concurrent \
    -no-feature-printsupport -no-feature-tabletevent \
    -- -G Ninja -DCMAKE_TOOLCHAIN_FILE="$TAVIK_WIN_TOOLCHAIN" \
    -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake >"$work/configure.log" 2>&1 ||
    { tail -n 40 "$work/configure.log" >&2; exit 1; }
nice -n 10 cmake --build . --parallel "$TAVIK_WIN_JOBS" >"$work/build.log" 2>&1 ||
    { tail -n 40 "$work/build.log" >&2; exit 1; }
cmake --install . >"$work/install.log" 2>&1 || { tail -n 40 "$work/install.log" >&2; exit 1; }
touch "$prefix/.done"
# The build folder is large (gigabytes) and not needed once installed.
rm -rf "$work"
echo "$prefix"
