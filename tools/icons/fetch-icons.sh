#!/bin/sh
# SPDX-License-Identifier: MIT
# Copies the Material Symbols icons the app uses into src/screenBase/icons/.
#
# Run by hand only; the SVGs are committed byte for byte as the package has
# them and the build never calls this. Needs npm (Debian: apt-get install npm).
#
# Usage: tools/icons/fetch-icons.sh [OUTDIR]   (default: src/screenBase/icons)
set -eu

PKG=@material-symbols/svg-300
VERSION=0.47.5
# Pinned so a rerun cannot quietly pull in redrawn icons.
SHA256=d16515725fc3b054c22566168f30d4d4d00222887a34644c68416d2e75853785
# Outlined style, weight 300; the "-fill" variant only where a filled
# shape is wanted (the favourite star when set, the colour cubes).
STYLE=outlined
ICONS="restart_alt add star star-fill settings chevron_left delete sort info close deployed_code-fill cancel-fill"

here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
out=${1:-"$root/src/screenBase/icons"}
mkdir -p "$out"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

(cd "$work" && npm pack --silent "$PKG@$VERSION" >/dev/null)
tgz="$work/material-symbols-svg-300-$VERSION.tgz"
echo "$SHA256  $tgz" | sha256sum -c --quiet -
tar -xzf "$tgz" -C "$work"

for icon in $ICONS; do
    cp "$work/package/$STYLE/$icon.svg" "$out/$icon.svg"
done
cp "$work/package/LICENSE" "$out/LICENSE-MaterialSymbols.txt"

ls -l "$out"
