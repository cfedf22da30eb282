#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Pictures of the main screen in chosen themes, appearances and languages,
# each showing a saved favorite's detailed report, for looking at the layout.
#   tools/screenshots.sh OUTPUT_DIR [THEMES] [LANGUAGES]
# e.g. tools/screenshots.sh /tmp/shots "0 5 9" "en de ru"
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
out=${1:?output folder}
themes=${2:-0 5 9}
languages=${3:-en de ru}
mkdir -p "$out"
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
declare -A override=([de]=1 [ru]=2 [en]=3)

for theme in $themes; do
    for appearance in light dark; do
        for language in $languages; do
            config=$(mktemp -d)
            mkdir -p "$config/tavlo"
            cat > "$config/tavlo/tavlo.conf" <<CONF
[General]
firstStart2=true
moreDetails=true
color=$theme
preferredL=${override[$language]}
dataSave=true
birthdayMove=true
Name=Anna
birthday=12 3 1985
CONF
            XDG_CONFIG_HOME=$config TZ=Europe/Berlin TAVLO_APPEARANCE=$appearance \
                xvfb-run --auto-servernum --server-args="-screen 0 1024x900x24" \
                "$root/build/tavlo" --screenshot "$out/main-$theme-$appearance-$language.png" \
                >/dev/null
            rm -rf "$config"
        done
    done
done
ls "$out"
