#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs Tavlo's Debian package into a fresh, minimal bookworm system (made
# with debootstrap) with nothing but the package's own dependencies, then
# checks that every QML module Tavlo imports is there and starts it: the
# command line, and the window on the offscreen platform drawing its main
# screen. Needs root and the Debian archive; not part of ./test.
#   tools/clean-install.sh DEB [ROOT]   (ROOT: made when missing; default
#                                        /tmp/tavlo-bookworm-root)
set -euo pipefail
repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
deb=$(realpath "${1:?the .deb to install}")
root=${2:-/tmp/tavlo-bookworm-root}

if [[ ! -x $root/usr/bin/apt-get ]]; then
    command -v debootstrap >/dev/null || { echo "clean-install: needs debootstrap" >&2; exit 1; }
    debootstrap --variant=minbase bookworm "$root" http://deb.debian.org/debian >/dev/null
fi
in_root() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 "$@"; }
mountpoint -q "$root/proc" || mount -t proc proc "$root/proc"
trap 'umount "$root/proc" 2>/dev/null || true' EXIT

cp "$deb" "$root/tmp/"
in_root apt-get update -qq
in_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "/tmp/$(basename "$deb")" >/dev/null
echo "installed: $(in_root dpkg-query -W -f='${Package} ${Version}' tavlo)," \
    "$(in_root dpkg-query -W -f='${binary:Package}\n' | wc -l) packages in the system"

# Every module a QML file imports, as a folder under Qt's QML directory.
missing=0
qml=$root/usr/lib/x86_64-linux-gnu/qt6/qml
while read -r module; do
    [[ $module == Tavlo* ]] && continue
    if [[ -f $qml/${module//.//}/qmldir ]]; then
        echo "QML module $module: present"
    else
        echo "QML module $module: MISSING" >&2
        missing=1
    fi
done < <(grep -rhoE '^import [A-Za-z][A-Za-z0-9.]*' "$repo/src" --include='*.qml' |
    awk '{print $2}' | sort -u)

echo "command line: $(in_root tavlo report 1985-03-12T08:30 | head -1)"
in_root env XDG_RUNTIME_DIR=/tmp QT_QPA_PLATFORM=offscreen \
    tavlo --screenshot /tmp/main.png >/dev/null 2>&1
[[ -s $root/tmp/main.png ]] || { echo "clean-install: the app drew no window" >&2; exit 1; }
echo "window: the main screen drawn ($(stat -c %s "$root/tmp/main.png") bytes of PNG)"
exit $missing
