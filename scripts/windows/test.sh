#!/usr/bin/env bash
# Runs the Windows build's tests (build-win, made by scripts/windows.sh with TAVIK_WIN_TESTS=ON)
# under Wine through CTest, then lists the tests that skipped themselves there with their reasons
# and counts what ran against the Linux build's tests.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/windows/common.sh
. scripts/windows/wine-env.sh
[ -f build-win/CTestTestfile.cmake ] || { echo "windows: build-win has no tests (TAVIK_WIN_TESTS=ON scripts/windows.sh)" >&2; exit 1; }

start=$SECONDS
# Only the window tests, under xvfb-run, have a display (and with it a Wine prefix of their own).
unset DISPLAY
# A server left from another run may have its desktop on a display that is gone.
wineserver -k 2>/dev/null || true
win_release_mounts
win_wine_ready
trap 'wineserver -k 2>/dev/null || true; win_release_mounts' EXIT
status=0
ctest --test-dir build-win --output-on-failure -j"$TAVIK_WIN_JOBS" || status=$?

log=build-win/Testing/Temporary/LastTest.log
total=$(grep -c '^[0-9]*/[0-9]* Testing: ' "$log" || true)
echo "windows: tests that skipped themselves under Wine, and why:"
# GoogleTest prints "file:line: Skipped", the reason on the next line, then the test's name.
awk '/: Skipped$/ { getline why; next_is_why = 1; next }
     next_is_why && /^\[  SKIPPED \] [A-Za-z]/ { sub(/ \([0-9]+ ms\)$/, "", $0);
         print "    " substr($0, 14) ": " why; next_is_why = 0 }' "$log" | sort
skipped=$(grep -c '^\[  SKIPPED \] [A-Za-z].* ms)$' "$log" || true)
if [ -f build/CTestTestfile.cmake ]; then
    linux=$(ctest --test-dir build --show-only=json-v1 |
        python3 -c 'import json, sys; print(len(json.load(sys.stdin)["tests"]))')
    echo "windows: $((total - skipped)) tests ran under Wine ($skipped skipped of $total);" \
        "the Linux build has $linux"
fi
echo "windows: the tests under Wine took $((SECONDS - start)) s"
exit $status
