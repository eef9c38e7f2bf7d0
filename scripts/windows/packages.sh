#!/usr/bin/env bash
# Installs the Debian packages the Windows build needs, and makes Debian's source packages
# reachable for apt-get source (the machine's list may hold binary packages only).
set -euo pipefail

packages=(mingw-w64 wine wine64 dpkg-dev cmake ninja-build pkg-config make qt6-base-dev qt6-translations-l10n xvfb x11-apps netpbm ccache fonts-dejavu-core)

sudo=""
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null 2>&1 || { echo "need root or sudo for apt-get" >&2; exit 1; }
    sudo="sudo"
fi

updated=no
if ! grep -rqs '^Types:.*deb-src\|^deb-src ' /etc/apt/sources.list /etc/apt/sources.list.d/; then
    # The same archive the machine already uses, for source packages.
    list=/etc/apt/sources.list.d/debian.sources
    [ -f "$list" ] || { echo "no deb-src entry, and no $list to copy one from" >&2; exit 1; }
    sed 's/^Types: deb$/Types: deb-src/' "$list" | $sudo tee /etc/apt/sources.list.d/tavik-debian-src.sources >/dev/null
    $sudo apt-get update -qq
    updated=yes
fi

missing=()
for p in "${packages[@]}"; do
    dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "windows: installing ${missing[*]}"
    [ $updated = yes ] || $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
