#!/usr/bin/env bash
# Cross-builds the sound libraries and GoogleTest for 64-bit Windows from their Debian source
# packages, once: the installation is reused while the source versions and this script are unchanged.
# The LGPL libraries (libsndfile, mpg123, LAME, libsoxr) and PortAudio and libebur128 become DLLs a
# user can replace; the BSD codecs are linked into libsndfile. Prints the installation folder last.
set -euo pipefail
. "$(dirname "$0")/common.sh"

packages="libogg libvorbis flac opus mpg123 lame libsndfile libsoxr portaudio19 libebur128 googletest"
key=$(win_cache_key "$packages" "$0" "$TAVIK_WIN_SCRIPTS/common.sh" "$TAVIK_WIN_TOOLCHAIN")
prefix="$TAVIK_WIN_CACHE/libs-$key"
if [ -f "$prefix/.done" ]; then
    echo "windows: sound libraries already built in $prefix" >&2
    echo "$prefix"
    exit 0
fi
work="$TAVIK_WIN_CACHE/work/libs-$key"
rm -rf "$work" "$prefix"
mkdir -p "$work" "$prefix"
export TAVIK_WIN_PREFIX="$prefix"
export PKG_CONFIG_LIBDIR="$prefix/lib/pkgconfig" PKG_CONFIG_PATH=""

log() { echo "$work/$1.log"; }
fail() { tail -n 40 "$(log "$1")" >&2; exit 1; }

cmake_lib() { # name, cmake options...
    local name=$1; shift
    local src; src=$(win_fetch_source "$name" "$work/$name")
    (cmake -S "$src" -B "$work/$name/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$TAVIK_WIN_TOOLCHAIN" -DCMAKE_INSTALL_PREFIX="$prefix" \
        -DCMAKE_PREFIX_PATH="$prefix" -DBUILD_TESTING=OFF "$@" &&
        nice -n 10 cmake --build "$work/$name/build" --parallel "$TAVIK_WIN_JOBS" &&
        cmake --install "$work/$name/build") >"$(log "$name")" 2>&1 || fail "$name"
}

autotools_lib() { # name, configure options...
    local name=$1; shift
    local src; src=$(win_fetch_source "$name" "$work/$name")
    (cd "$src" && ./configure --host=$TAVIK_WIN_TRIPLE --prefix="$prefix" \
        CC=$TAVIK_WIN_TRIPLE-gcc-posix CXX=$TAVIK_WIN_TRIPLE-g++-posix \
        CPPFLAGS="-I$prefix/include" LDFLAGS="-L$prefix/lib" "$@" &&
        nice -n 10 make -j"$TAVIK_WIN_JOBS" && make install) >"$(log "$name")" 2>&1 || fail "$name"
}

win_timed libogg cmake_lib libogg -DBUILD_SHARED_LIBS=OFF -DINSTALL_DOCS=OFF
win_timed libvorbis cmake_lib libvorbis -DBUILD_SHARED_LIBS=OFF
win_timed flac cmake_lib flac -DBUILD_SHARED_LIBS=OFF -DBUILD_PROGRAMS=OFF -DBUILD_EXAMPLES=OFF \
    -DBUILD_DOCS=OFF -DBUILD_CXXLIBS=OFF -DINSTALL_MANPAGES=OFF -DWITH_OGG=ON
win_timed opus autotools_lib opus --disable-shared --enable-static --disable-doc --disable-extra-programs
win_timed mpg123 autotools_lib mpg123 --enable-shared --disable-static --disable-components \
    --enable-libmpg123 --with-cpu=x86-64
# LAME 3.100 lists a symbol it no longer defines in its export list, which a DLL link refuses.
sed -i '/^lame_init_old$/d' "$(win_fetch_source lame "$work/lame")/include/libmp3lame.sym"
win_timed lame autotools_lib lame --enable-shared --disable-static --disable-frontend --disable-gtktest
# The codecs are static, so their users must not expect dllimport symbols; FLAC is built with
# fortified string calls, which live in libssp.
win_timed libsndfile cmake_lib libsndfile -DBUILD_SHARED_LIBS=ON -DBUILD_PROGRAMS=OFF \
    -DBUILD_EXAMPLES=OFF -DENABLE_EXTERNAL_LIBS=ON -DENABLE_MPEG=ON -DINSTALL_MANPAGES=OFF \
    -DENABLE_CPACK=OFF -DCMAKE_C_FLAGS="-DFLAC__NO_DLL" \
    -DCMAKE_C_STANDARD_LIBRARIES="-lkernel32 -luser32 -ladvapi32 -lole32 -lshlwapi -lssp"
win_timed libsoxr cmake_lib libsoxr -DBUILD_SHARED_LIBS=ON -DWITH_OPENMP=OFF -DBUILD_TESTS=OFF \
    -DBUILD_EXAMPLES=OFF -DWITH_LSR_BINDINGS=OFF
# MME and WDM-KS; this version's CMake builds DirectSound only with the DirectX SDK and WASAPI only
# with Visual Studio.
win_timed portaudio19 cmake_lib portaudio19 -DPA_DLL_LINK_WITH_STATIC_RUNTIME=OFF
win_timed libebur128 cmake_lib libebur128 -DBUILD_STATIC_LIBS=OFF -DENABLE_INTERNAL_QUEUE_H=ON
win_timed googletest cmake_lib googletest -DBUILD_SHARED_LIBS=OFF -DBUILD_GMOCK=ON

# DLLs go to bin (some installs put them beside the import libraries), and every library the
# editor finds through pkg-config has a pkg-config file.
mkdir -p "$prefix/bin"
find "$prefix/lib" -maxdepth 1 -name '*.dll' -exec mv {} "$prefix/bin/" \;
for pc in soxr:soxr:0.1.3 portaudio-2.0:portaudio:19.6.0; do
    IFS=: read -r file lib version <<<"$pc"
    [ -f "$prefix/lib/pkgconfig/$file.pc" ] && continue
    cat >"$prefix/lib/pkgconfig/$file.pc" <<PC
prefix=$prefix
libdir=\${prefix}/lib
includedir=\${prefix}/include

Name: $file
Description: $file (cross-built for Windows)
Version: $version
Libs: -L\${libdir} -l$lib
Cflags: -I\${includedir}
PC
done
# Relative to the file, so the folder can move (a renamed cache, another home).
sed -i -e '/^prefix=/!s|'"$prefix"'|${prefix}|g' -e 's|^prefix=.*|prefix=${pcfiledir}/../..|' \
    "$prefix"/lib/pkgconfig/*.pc
touch "$prefix/.done"
rm -rf "$work"
echo "$prefix"
