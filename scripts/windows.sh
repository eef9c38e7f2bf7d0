#!/usr/bin/env bash
# Builds the Windows editor on Debian: installs MinGW-w64 and Wine, cross-builds Qt and the sound
# libraries from Debian's source packages into a cache outside the checkout (once; reused while
# their versions are unchanged), then builds tavik-editor.exe and tavik.exe into build-win/ and
# the portable zip dist/TavikEditor-<version>-win64.zip.
#   TAVIK_WIN_CACHE  where the cross-built libraries are kept (default ~/.cache/tavik-windows)
#   TAVIK_WIN_TESTS  ON to build the test programs too (scripts/windows/test.sh runs them)
# Then runs the programs of the zip under Wine (scripts/windows/wine-check.sh).
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/windows/common.sh
. scripts/windows/wine-env.sh

total=$SECONDS
win_timed "Debian packages" bash scripts/windows/packages.sh
start=$SECONDS
qt=$(bash scripts/windows/qt.sh | tail -n1)
echo "windows: Qt took $((SECONDS - start)) s"
# Qt's offscreen platform (the tests') reads font files from Qt's lib/fonts; Wine passes no QT_*
# variable on, so QT_QPA_FONTDIR cannot name another folder.
[ -e "$qt/lib/fonts" ] || ln -s /usr/share/fonts/truetype/dejavu "$qt/lib/fonts"
# The test programs load Qt from the cache, and so its translations from there.
bash scripts/windows/translations.sh "$qt/translations"
start=$SECONDS
libs=$(bash scripts/windows/libs.sh | tail -n1)
echo "windows: sound libraries took $((SECONDS - start)) s"
# Where the test programs find their DLLs when CTest runs them under Wine.
dlls="$qt/bin:$libs/bin:/usr/lib/gcc/$TAVIK_WIN_TRIPLE/12-posix:/usr/$TAVIK_WIN_TRIPLE/lib"

start=$SECONDS
mkdir -p build-win
# A build made against other library folders (another key of the cache) keeps their paths in
# its CMake cache: it starts afresh.
if [ -f build-win/CMakeCache.txt ] &&
    grep -o "$TAVIK_WIN_CACHE/[a-z]*-[0-9a-f]*" build-win/CMakeCache.txt | sort -u |
    grep -qvxF -e "$qt" -e "$libs"; then
    rm -f build-win/CMakeCache.txt
fi
# The test programs' tests are listed by running them under Wine as they are built, offscreen.
unset DISPLAY
[ "${TAVIK_WIN_TESTS:-OFF}" = ON ] && win_wine_ready
# ccache keeps the compiles that use precompiled headers too, once told that their macros and
# time stamps are the build's own.
export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
cmake -S . -B build-win -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64-x86_64.cmake" \
    -DTAVIK_WIN_PREFIX="$qt;$libs" -DCMAKE_PREFIX_PATH="$qt;$libs" -DQT_HOST_PATH=/usr \
    -DCMAKE_CXX_COMPILER_LAUNCHER=ccache \
    -DCMAKE_CROSSCOMPILING_EMULATOR="/usr/bin/env;TAVIK_WINEPREFIX=$WINEPREFIX;$PWD/scripts/windows/wine-run.sh;$dlls" \
    -DTAVIK_BUILD_TESTS="${TAVIK_WIN_TESTS:-OFF}" -DTAVIK_BUILD_BENCH=ON >build-win/build.log 2>&1 ||
    { tail -n 40 build-win/build.log >&2; exit 1; }
cmake --build build-win --parallel "$TAVIK_WIN_JOBS" >>build-win/build.log 2>&1 ||
    { grep -E 'error|FAILED' build-win/build.log | head -n 40 >&2; exit 1; }
echo "windows: the editor took $((SECONDS - start)) s"
# Warnings fail the run, after the programs have been tried all the same.
warnings=$(grep -c 'warning:' build-win/build.log || true)

# The program folder as delivered, with the DLLs the programs load beside them (where Windows
# and Wine look first).
rm -rf build-win/root
cmake --install build-win --prefix build-win/root >/dev/null
bash scripts/windows/deploy.sh build-win/root/bin "$qt" "$libs"
echo "windows: built in $((SECONDS - total)) s: build-win/root/bin/tavik-editor.exe, tavik.exe"

# The portable zip: the program folder under a folder named for the version.
version=$(sed -n 's/^project(TavikEditor VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
zip="dist/TavikEditor-$version-win64.zip"
rm -rf build-win/zip "$zip"
mkdir -p build-win/zip dist
cp -r build-win/root "build-win/zip/TavikEditor-$version"
(cd build-win/zip && cmake -E tar cf "../../$zip" --format=zip "TavikEditor-$version")
echo "windows: $zip, $(($(stat -c %s "$zip") / 1024 / 1024)) MB"

# What a user does: unpack it anywhere (here under a name beyond ASCII) and start it.
win_timed "the run under Wine" bash scripts/windows/wine-check.sh "$zip" build-win/windows-mainwindow.png
if [ "$warnings" -gt 0 ]; then
    grep -A3 'warning:' build-win/build.log >&2
    echo "windows: the build has $warnings warning(s) (build-win/build.log)" >&2
    exit 1
fi
