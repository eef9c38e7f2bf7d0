#!/usr/bin/env bash
# Runs a Windows program of the build under Wine, finding the cross-built DLLs through WINEPATH:
# CMake's cross-compiling emulator, for CTest and GoogleTest's test discovery.
#   wine-run.sh DLL_FOLDERS PROGRAM.exe ARGS...   (DLL_FOLDERS ':'-separated)
# TAVIK_WINEPREFIX names the prefix (the build passes it, so a test that moves HOME still finds
# it). On an X display (a window test under xvfb-run) the program gets a prefix of its own,
# copied from that one: Wine binds a prefix's desktop to the display it was first used on.
set -euo pipefail
. "$(dirname "$0")/common.sh"
. "$(dirname "$0")/wine-env.sh"
path=""
IFS=: read -r -a dirs <<<"$1"
shift
# Wine's drive Z: is the root folder; spelled here rather than asked of winepath, which would
# start a Wine process of its own for each folder of each test.
for dir in "${dirs[@]}"; do
    path+="Z:${dir//\//\\};"
done
export WINEPATH="$path"
if [ -n "${DISPLAY:-}" ]; then
    own=$(mktemp -d "${TMPDIR:-/tmp}/tavik-wineprefix.XXXXXX")
    # Linked, not copied: Wine replaces the files it changes (the registry) rather than writing
    # into them.
    cp -al "$WINEPREFIX/." "$own/"
    export WINEPREFIX=$own
    trap 'wineserver -k 2>/dev/null; wineserver -w 2>/dev/null; rm -rf "$own"' EXIT
    win_wine_server
    status=0
    wine "$@" || status=$?
    exit $status
fi
win_wine_server
exec wine "$@"
