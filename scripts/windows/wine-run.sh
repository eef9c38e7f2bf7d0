#!/usr/bin/env bash
# Runs a Windows program of the build under Wine, finding the cross-built DLLs through WINEPATH:
# CMake's cross-compiling emulator, for CTest and GoogleTest's test discovery.
#   wine-run.sh DLL_FOLDERS PROGRAM.exe ARGS...   (DLL_FOLDERS ':'-separated)
set -euo pipefail
. "$(dirname "$0")/common.sh"
export WINEPREFIX="${TAVIK_WINEPREFIX:-$TAVIK_WIN_CACHE/wineprefix}" WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
path=""
IFS=: read -r -a dirs <<<"$1"
shift
for dir in "${dirs[@]}"; do
    path+="$(winepath -w "$dir" 2>/dev/null);"
done
export WINEPATH="$path"
# A server kept running makes each start cheap; one already running refuses a second.
wineserver -p 2>/dev/null || true
exec wine "$@"
