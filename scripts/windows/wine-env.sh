# Shared by the scripts that run the Windows programs under Wine: the prefix and its server.
# Sourced, after common.sh, not run. (Kept apart from common.sh, whose text keys the cache of
# the cross-built libraries.)

# The Wine prefix the Windows programs run in, made once beside the cache; no Mono or Gecko
# (nothing of ours needs them, and asking for them would try the network).
export WINEPREFIX="${TAVIK_WINEPREFIX:-$TAVIK_WIN_CACHE/wineprefix}" WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="mscoree,mshtml="
# Wine's PulseAudio driver asks the sound server for buffers of about ten milliseconds; on a busy
# two-core machine its stream then runs dry now and then for a few milliseconds, heard as a break
# in the sound (about one 2-second sound in eight, whichever way it is played). Forty
# milliseconds, asked for through the variable libpulse reads for every stream, make that rare;
# sixty made the moment a buffer is heard wander by up to 20 ms.
export PULSE_LATENCY_MSEC="${PULSE_LATENCY_MSEC:-40}"

# Makes the prefix (once) and keeps a Wine server running, so each program then starts in a
# fraction of a second instead of seconds. One already running for the prefix refuses a second,
# which is as good.
win_wine_ready() {
    win_wine_server
    wineboot -i >/dev/null 2>&1 || true
}

# Starts the persistent Wine server, detached from this shell's output: a server that kept a
# test's output pipe open would make CTest wait for it.
win_wine_server() {
    wineserver -p </dev/null >/dev/null 2>&1 || true
}

# Lets go of the small drives the full-disk tests mount on the host under the Wine prefixes; a
# test that was stopped before it could unmount its own would leave one for every later program
# (and every folder dialog) to see.
win_release_mounts() {
    # findmnt finding none fails, which is no failure here.
    { findmnt -rn -S tavik-test -o TARGET 2>/dev/null || true; } | while IFS= read -r target; do
        target=$(printf '%b' "$target")
        case "$target" in
        "$TAVIK_WIN_CACHE"/*) umount -l "$target" 2>/dev/null || true ;;
        esac
    done
}
