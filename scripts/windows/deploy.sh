#!/usr/bin/env bash
# Puts beside the executables in folder $1 every DLL they load that is not part of Windows (found
# through their import tables, recursively), the Qt plugins Qt looks for there, and Qt's own
# translations for the editor's languages where Qt looks for them (the root's translations/).
#   deploy.sh FOLDER QT_PREFIX LIBS_PREFIX
set -euo pipefail
. "$(dirname "$0")/common.sh"
dest=$1 qt=$2 libs=$3
search=("$qt/bin" "$libs/bin" /usr/lib/gcc/$TAVIK_WIN_TRIPLE/12-posix /usr/$TAVIK_WIN_TRIPLE/lib)

# The plugins: platforms (windows, offscreen), the native style, the icon and picture formats.
for dir in platforms styles imageformats; do
    mkdir -p "$dest/$dir"
done
cp "$qt/plugins/platforms/"{qwindows,qoffscreen}.dll "$dest/platforms/"
cp "$qt/plugins/styles/"*.dll "$dest/styles/"
cp "$qt/plugins/imageformats/"*.dll "$dest/imageformats/"
$TAVIK_WIN_TRIPLE-strip --strip-unneeded "$dest"/*.exe
bash "$(dirname "$0")/translations.sh" "$dest/../translations"

imports() { $TAVIK_WIN_TRIPLE-objdump -p "$1" | sed -n 's/^\s*DLL Name: //p'; }

queue=("$dest"/*.exe "$dest"/platforms/*.dll "$dest"/styles/*.dll "$dest"/imageformats/*.dll)
declare -A seen=()
while [ ${#queue[@]} -gt 0 ]; do
    file=${queue[0]}
    queue=("${queue[@]:1}")
    for dll in $(imports "$file"); do
        key=${dll,,}
        [ -n "${seen[$key]:-}" ] && continue
        seen[$key]=1
        for dir in "${search[@]}"; do
            found=$(find "$dir" -maxdepth 1 -iname "$dll" -print -quit 2>/dev/null)
            if [ -n "$found" ]; then
                # Stripped: the toolchain's runtime DLLs carry their debugging symbols.
                [ -f "$dest/$dll" ] || $TAVIK_WIN_TRIPLE-strip --strip-unneeded -o "$dest/$dll" "$found"
                queue+=("$found")
                break
            fi
        done
        # Not found: a system DLL (kernel32, winmm, ...), which Windows provides.
    done
done
