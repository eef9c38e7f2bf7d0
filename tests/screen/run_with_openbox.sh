#!/usr/bin/env bash
# Runs a program on the X server of DISPLAY (started by xvfb-run) under the openbox window
# manager, so windows get real frames and a manager that places them. Exits with the
# program's exit code; fails when openbox cannot be started.
set -u
[ $# -ge 1 ] || { echo "usage: run_with_openbox.sh PROGRAM [ARGS...]" >&2; exit 2; }
[ -n "${DISPLAY:-}" ] || { echo "run_with_openbox.sh: no X display" >&2; exit 2; }
command -v openbox >/dev/null || { echo "run_with_openbox.sh: openbox is not installed" >&2; exit 2; }

openbox --sm-disable >/dev/null 2>&1 &
wm=$!
stop_wm() { kill "$wm" 2>/dev/null; wait "$wm" 2>/dev/null; }
trap stop_wm EXIT

# A manager announces itself on the root window; wait for that, up to ten seconds.
for _ in $(seq 1 100); do
    if xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; then
        break
    fi
    if ! kill -0 "$wm" 2>/dev/null; then
        echo "run_with_openbox.sh: openbox ended at start" >&2
        exit 2
    fi
    sleep 0.1
done
xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' ||
    { echo "run_with_openbox.sh: openbox did not come up" >&2; exit 2; }

"$@"
status=$?
exit $status
