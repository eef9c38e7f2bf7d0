#!/bin/sh
# Runs a command against a private PulseAudio server whose default sink is a null sink
# ("tavik_null"; its monitor "tavik_null.monitor" records what is played), then stops it.
# Works as root and without a session bus or display. Fails when the server cannot start.
set -u
dir=$(mktemp -d "${TMPDIR:-/tmp}/tavik-pulse.XXXXXX") || exit 1
export HOME="$dir" XDG_RUNTIME_DIR="$dir" XDG_CONFIG_HOME="$dir/config"
unset DBUS_SESSION_BUS_ADDRESS DISPLAY
pulseaudio --daemonize=no --system=false -n --use-pid-file=no --exit-idle-time=-1 \
    --disallow-exit --log-target=file:"$dir/pulse.log" \
    --load="module-null-sink sink_name=tavik_null" \
    --load="module-native-protocol-unix socket=$dir/native auth-anonymous=1" &
server=$!
export PULSE_SERVER="unix:$dir/native"
stop() {
    kill "$server" 2>/dev/null
    wait "$server" 2>/dev/null
    rm -rf "$dir"
}
tries=0
until pactl info >/dev/null 2>&1; do
    tries=$((tries + 1))
    if [ "$tries" -gt 100 ] || ! kill -0 "$server" 2>/dev/null; then
        echo "with_pulseaudio.sh: the PulseAudio server did not start (install pulseaudio and" \
            "pulseaudio-utils; see scripts/setup.sh). Its log:" >&2
        cat "$dir/pulse.log" >&2 2>/dev/null
        stop
        exit 1
    fi
    sleep 0.1
done
pactl set-default-sink tavik_null
"$@"
status=$?
stop
exit $status
