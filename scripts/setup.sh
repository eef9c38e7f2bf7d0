#!/usr/bin/env bash
# Installs the Debian packages the build needs, when they are missing.
set -euo pipefail

packages=(cmake g++ make pkg-config qt6-base-dev qt6-translations-l10n libgtest-dev libsndfile1-dev clang libclang-rt-14-dev xvfb xauth
    openbox x11-utils portaudio19-dev libsoxr-dev libebur128-dev libasound2-plugins pulseaudio pulseaudio-utils)

missing=()
for p in "${packages[@]}"; do
    dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null 2>&1 || { echo "need root or sudo to install: ${missing[*]}" >&2; exit 1; }
    sudo="sudo"
fi
echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
