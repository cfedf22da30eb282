#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Pictures of the favorites or settings screen with a dozen favorites saved,
# in chosen themes, appearances and languages: the app runs on a virtual
# display, taps open the screen as a user would, and the window is captured.
#   tools/screen-screenshots.sh OUTPUT_DIR [THEMES] [LANGUAGES] [fav|set|info|add]
# "add" shows Anna's report with the add dialog open over it.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
out=${1:?output folder}
themes=${2:-0 6 9}
languages=${3:-en ru}
screen=${4:-fav}
mkdir -p "$out"
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
declare -A override=([de]=1 [ru]=2 [en]=3)
display=:$((80 + RANDOM % 9))
Xvfb "$display" -screen 0 1024x900x24 >/dev/null 2>&1 &
xvfb=$!
trap 'kill $xvfb 2>/dev/null' EXIT
sleep 1
export DISPLAY=$display

people='[person]
1\1=Anna
1\2=12 3 1985
1\size=2
2\1=Bob
2\2=1 1 2000
2\size=2
3\1=Ольга Петрова
3\2=23 11 1990
3\size=2
4\1=  Zoë 🎂
4\2=29 2 1996
4\size=2
5\1=Max Mustermann-Schmidt von Hohenlohe
5\2=24 12 1970
5\size=2
6\1=Li Wei
6\2=5 7 2012
6\size=2
7\1=Sam
7\2=22 11 1950
7\size=2
8\1=Grandma
8\2=2 2 1931
8\size=2
9\1=Noah
9\2=30 6 2021
9\size=2
10\1=Emma
10\2=14 8 1999
10\size=2
11\1=Ivan
11\2=8 10 1984
11\size=2
12\1=Mia
12\2=21 1 2005
12\size=2
size=12'

for theme in $themes; do
    for appearance in light dark; do
        for language in $languages; do
            config=$(mktemp -d)
            mkdir -p "$config/tavlo"
            extra=
            if [[ $screen == add ]]; then
                extra='moreDetails=true\ndataSave=true\nbirthdayMove=true\nName=Anna\nbirthday=12 3 1985\n'
            fi
            printf "[General]\\nfirstStart2=true\\nstar=true\\nweekday=true\\nsort=2\\ncolor=%s\\npreferredL=%s\\n$extra%s\\n" \
                "$theme" "${override[$language]}" "$people" > "$config/tavlo/tavlo.conf"
            XDG_CONFIG_HOME=$config TZ=Europe/Berlin TAVLO_APPEARANCE=$appearance \
                "$root/build/tavlo" >/dev/null 2>&1 &
            app=$!
            window=$(xdotool search --sync --name '^Tavlo$' | head -1)
            sleep 0.5
            case $screen in
                fav) xdotool mousemove --window "$window" 244 824 click 1 ;;
                set | info) xdotool mousemove --window "$window" 341 824 click 1 ;;
                add)
                    # A turn of the day wheel makes a report that can be added.
                    xdotool mousemove --window "$window" 228 718 sleep 0.2 mousedown 1
                    for y in 712 706 700 694 688 682 681; do
                        xdotool sleep 0.05 mousemove --window "$window" 228 $y
                    done
                    xdotool sleep 0.3 mouseup 1
                    sleep 1.5
                    xdotool mousemove --window "$window" 146 824 click 1
                    ;;
            esac
            sleep 2.5
            if [[ $screen == info ]]; then
                xdotool mousemove --window "$window" 357 17 click 1
                sleep 0.5
            fi
            # The pointer leaves the window: a control under it would show its
            # hover outline, which a phone never has.
            xdotool mousemove 1020 890
            sleep 0.3
            import -window "$window" "$out/$screen-$theme-$appearance-$language.png"
            kill $app
            wait $app 2>/dev/null || true
            rm -rf "$config"
        done
    done
done
ls "$out"
