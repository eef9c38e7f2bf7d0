#!/usr/bin/env bash
# Copies Qt's translations of its own texts (buttons, file dialogs) for every language file's
# QtLocale into folder $1. They are the host Qt's (the same version as the cross-built one):
# translation files are the same on every system.
#   translations.sh FOLDER
set -euo pipefail
dest=$1
root="$(cd "$(dirname "$0")/../.." && pwd)"
mkdir -p "$dest"
for locale in $(sed -n 's/^QtLocale=\([A-Za-z_]*\).*/\1/p' "$root"/res/lang/*.lng | sort -u); do
    [ "$locale" = en ] && continue
    file=/usr/share/qt6/translations/qtbase_$locale.qm
    [ -f "$file" ] || { echo "windows: $file is missing (qt6-translations-l10n)" >&2; exit 1; }
    cp "$file" "$dest/"
done
