# Shared by the Windows build scripts: where the cache is, how a Debian source package is fetched, timing.
# Sourced, not run.

TAVIK_WIN_CACHE="${TAVIK_WIN_CACHE:-$HOME/.cache/tavik-windows}"
TAVIK_WIN_TRIPLE=x86_64-w64-mingw32
TAVIK_WIN_JOBS="${TAVIK_WIN_JOBS:-2}"
TAVIK_WIN_SCRIPTS="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
TAVIK_WIN_TOOLCHAIN="$(cd "$TAVIK_WIN_SCRIPTS/../../cmake" && pwd)/mingw-w64-x86_64.cmake"

# The exact source version apt would fetch, e.g. "6.4.2+dfsg-10".
win_source_version() {
    apt-get source --print-uris -qq "$1" 2>/dev/null | grep -o "${1}_[^ ']*\.dsc" | head -n1 |
        sed -e "s/^${1}_//" -e 's/\.dsc$//' -e 's/%2b/+/g' -e 's/%7e/~/g'
}

# A short key from the source versions of the packages named and the files given (scripts, toolchain).
win_cache_key() {
    local packages=$1; shift
    {
        for p in $packages; do echo "$p $(win_source_version "$p")"; done
        cat "$@"
    } | sha256sum | cut -c1-16
}

# Unpacks the Debian source package $1 into $2 (once) and prints the folder it made. The archive
# mirror lacks a few signature files and Debian diffs; apt-get then stops before unpacking, so what
# it did fetch is unpacked here: the .dsc without its signature, else the upstream tarball alone
# (the Debian changes are packaging, not needed for a cross build).
win_fetch_source() {
    local pkg=$1 into=$2 dsc orig
    mkdir -p "$into"
    if ! ls -d "$into"/*/ >/dev/null 2>&1; then
        (cd "$into" && apt-get source -qq "$pkg" >/dev/null 2>"$into/apt-get.log") || true
    fi
    if ! ls -d "$into"/*/ >/dev/null 2>&1; then
        dsc=$(ls "$into"/*.dsc 2>/dev/null | head -n1)
        [ -n "$dsc" ] && (cd "$into" && dpkg-source -x --no-check "$dsc" >/dev/null 2>&1) || true
    fi
    if ! ls -d "$into"/*/ >/dev/null 2>&1; then
        orig=$(ls "$into"/*.orig.tar.* 2>/dev/null | grep -v '\.asc$' | head -n1)
        [ -n "$orig" ] || { echo "windows: could not fetch the source of $pkg" >&2; cat "$into/apt-get.log" >&2; return 1; }
        mkdir -p "$into/$pkg-upstream"
        tar -xf "$orig" -C "$into/$pkg-upstream" --strip-components=1
    fi
    ls -d "$into"/*/ | head -n1 | sed 's:/$::'
}

# Runs a named step and prints how long it took.
win_timed() {
    local name=$1; shift
    local start=$SECONDS
    "$@"
    echo "windows: $name took $((SECONDS - start)) s"
}
