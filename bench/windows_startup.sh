#!/usr/bin/env bash
# Start-up of the Windows editor under Wine, against a bare Qt program that only shows a main
# window (bench_barewindow.exe), timed the same way in the same run: from the start of the
# process to its main window on a private Xvfb screen (watched with xwininfo every 10 ms). The
# editor's splash comes first and stays beside the main window for its own designed time.
#   bench/windows_startup.sh [RUNS]   (after TAVIK_WIN_TESTS=ON scripts/windows.sh or windows.sh)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/windows/common.sh
. scripts/windows/wine-env.sh
runs=${1:-5}
root=build-win/root
bare=build-win/bench/bench_barewindow.exe
[ -x "$root/bin/tavik-editor.exe" ] && [ -f "$bare" ] || {
    echo "windows_startup.sh: build the Windows editor first (scripts/windows.sh)" >&2
    exit 1
}
cp "$bare" "$root/bin/"
display=":${TAVIK_WIN_BENCH_DISPLAY:-93}"
Xvfb "$display" -screen 0 1280x900x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
# The prefix's desktop is bound to this screen, which goes at the end: so does the server.
trap 'wineserver -k 2>/dev/null || true; kill $xvfb 2>/dev/null || true
      rm -f "$root/bin/bench_barewindow.exe"' EXIT
sleep 1
export DISPLAY=$display
wineserver -k 2>/dev/null || true
win_wine_ready
# The language is chosen, so the editor goes straight to its splash and main window.
printf '[Settings]\r\nLanguage=%s\r\n' "$(winepath -w "$root/res/lang/Deutsch.lng")" |
    iconv -f UTF-8 -t CP1252 >"$root/bin/Tavik.ini"

now_ms() { date +%s%3N; }
# Milliseconds until a window whose name matches $1 is mapped, for the program $2...
time_to_window() {
    local pattern=$1 start pid t
    shift
    start=$(now_ms)
    wine "$@" -platform windows >/dev/null 2>&1 &
    pid=$!
    for _ in $(seq 1 3000); do
        if xwininfo -root -tree 2>/dev/null | grep -q "$pattern"; then
            t=$(($(now_ms) - start))
            break
        fi
        sleep 0.01
    done
    echo "${t:--1}"
    kill "$pid" 2>/dev/null || true
    # Nothing left running may hold this function's output open: it is read through a pipe.
    wait "$pid" 2>/dev/null || true
    sleep 1
}
median() { tr ' ' '\n' | grep -v '^-1$' | grep . | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

bare="" main=""
# One run of each before measuring: the first start after the prefix is made loads everything.
time_to_window '"Bare window"' "$root/bin/bench_barewindow.exe" >/dev/null
time_to_window '"Tavik Editor"' "$root/bin/tavik-editor.exe" >/dev/null
for _ in $(seq 1 "$runs"); do
    bare+=" $(time_to_window '"Bare window"' "$root/bin/bench_barewindow.exe")"
    main+=" $(time_to_window '"Tavik Editor"' "$root/bin/tavik-editor.exe")"
done
b=$(echo $bare | median) m=$(echo $main | median)
echo "start-up under Wine to the main window, median of $runs runs (-1: none within the wait):"
echo "  bare Qt window             $b ms   (runs:$bare)"
echo "  tavik-editor.exe           $m ms   (runs:$main)   ratio $(awk "BEGIN { printf \"%.2f\", $m / $b }")"
rm -f "$root/bin/Tavik.ini"
