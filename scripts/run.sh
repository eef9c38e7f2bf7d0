#!/usr/bin/env bash
# Builds the editor and starts it on this checkout's installation (bin/, Data/, res/).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$(nproc)" --target tavik-editor tavik

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && [ -z "${QT_QPA_PLATFORM:-}" ]; then
    if command -v xvfb-run >/dev/null 2>&1; then
        echo "No display: starting the editor under xvfb-run."
        exec xvfb-run -a build/src/tavik-editor "$@"
    fi
    echo "No display: starting the editor offscreen (QT_QPA_PLATFORM=offscreen)."
    export QT_QPA_PLATFORM=offscreen
fi
exec build/src/tavik-editor "$@"
