#!/usr/bin/env bash
# Runs the Windows build under Wine as a user gets it: the portable zip unpacked into a folder
# whose name goes beyond ASCII, tavik.exe --help and check on the demo package, then the editor
# with Qt's windows platform on a private Xvfb screen, whose window is kept as a picture.
#   wine-check.sh ZIP PICTURE
set -euo pipefail
. "$(dirname "$0")/common.sh"
. "$(dirname "$0")/wine-env.sh"
zip=$(cd "$(dirname "$1")" && pwd)/$(basename "$1") picture=$(realpath -m "$2")
display=":${TAVIK_WIN_DISPLAY:-91}"

unpacked=$(mktemp -d "${TMPDIR:-/tmp}/tavik-zip.XXXXXX")
mkdir -p "$unpacked/Zoë Ansagen"
(cd "$unpacked/Zoë Ansagen" && cmake -E tar xf "$zip")
root=$(ls -d "$unpacked/Zoë Ansagen"/TavikEditor-*)

xvfb_pid=""
cleanup() {
    [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
    # The prefix's desktop is bound to this run's display, which goes now.
    wineserver -k 2>/dev/null || true
    rm -rf "$unpacked"
}
trap cleanup EXIT

start=$SECONDS
# A server left from another run may have its desktop on a display that is gone.
wineserver -k 2>/dev/null || true
win_wine_ready
echo "windows: Wine prefix ready in $((SECONDS - start)) s"

failed=0
step() { # name, command...
    local name=$1; shift
    local t=$SECONDS
    if "$@"; then echo "windows: PASS $name ($((SECONDS - t)) s)"
    else echo "windows: FAIL $name (exit $?)"; failed=1; fi
}

help_shows_commands() {
    wine "$root/bin/tavik.exe" --help >"$unpacked/tavik-help.txt" 2>&1
    grep -q "check" "$unpacked/tavik-help.txt"
}
# The demo package through the project's own engine (TAVIK_AUDIO=null: it measures, silently)
# must have no findings; through winmm's MCI the findings are shown (Wine's MCI decodes MP3 only
# with GStreamer's plug-ins).
check_demo_package() {
    local package; package=$(winepath -w "$root/Data/Beispielpaket")
    TAVIK_AUDIO=null wine "$root/bin/tavik.exe" check "$package" >"$unpacked/tavik-check.txt" 2>&1
    TAVIK_AUDIO= wine "$root/bin/tavik.exe" check "$package" >"$unpacked/tavik-check-winmm.txt" 2>&1 || true
}
step "tavik.exe --help" help_shows_commands
head -n 3 "$unpacked/tavik-help.txt"
step "tavik.exe check Data/Beispielpaket (own engine)" check_demo_package
grep -v '^ALSA\|GStreamer\|gstreamer\|^$' "$unpacked/tavik-check.txt" | head -n 20
echo "windows: the same check through winmm's MCI:"
grep -v '^ALSA\|GStreamer\|gstreamer\|^$' "$unpacked/tavik-check-winmm.txt" | head -n 20

editor_window_picture() {
    # The language is chosen, so the first start goes straight to the main window. Profile
    # files hold code page 1252, and the path has an "ë".
    printf '[Settings]\r\nLanguage=%s\r\n' "$(winepath -w "$root/res/lang/Deutsch.lng")" |
        iconv -f UTF-8 -t CP1252 >"$root/bin/Tavik.ini"
    Xvfb "$display" -screen 0 1280x900x24 -nolisten tcp >/dev/null 2>&1 &
    xvfb_pid=$!
    sleep 2
    DISPLAY=$display wine "$root/bin/tavik-editor.exe" -platform windows >"$unpacked/editor.log" 2>&1 &
    local editor=$! id="" i
    for i in $(seq 1 60); do
        id=$(DISPLAY=$display xwininfo -root -tree 2>/dev/null |
            awk '/Tavik/ && / [0-9]+x[0-9]+\+/ { print $1; exit }')
        [ -n "$id" ] && break
        sleep 1
    done
    [ -n "$id" ] || { kill "$editor" 2>/dev/null; return 1; }
    sleep 5 # the splash window gives way to the main window
    id=$(DISPLAY=$display xwininfo -root -tree | awk '/Tavik/ && / [0-9]+x[0-9]+\+/ { print $1 }' | tail -n1)
    DISPLAY=$display xwininfo -root -tree | grep -i tavik || true
    DISPLAY=$display xwd -id "$id" -silent | xwdtopnm 2>/dev/null | pnmtopng >"$picture"
    kill "$editor" 2>/dev/null || true
    [ -s "$picture" ]
}
step "tavik-editor.exe on Xvfb ($picture)" editor_window_picture
exit $failed
