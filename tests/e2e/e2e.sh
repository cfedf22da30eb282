#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A person's first days with Tavlo, in a real window on a virtual display:
# taps, drags and typing with xdotool, pictures with ImageMagick, and the
# outcome read where a user could rely on it: what the screen shows, the
# settings file, and `tavlo favorites list --json`. A failing run keeps its
# pictures in the folder it names.
#   tests/e2e/e2e.sh TAVLO_BINARY OUTPUT_DIR
set -euo pipefail

tavlo=$(realpath "$1")
out=$2
rm -rf "$out"
mkdir -p "$out"
home=$(mktemp -d)
export XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data XDG_RUNTIME_DIR=$home/run
mkdir -p "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"
export TZ=Europe/Berlin LANG=en_US.UTF-8 LANGUAGE= LC_ALL= TAVLO_APPEARANCE=dark
export QT_QUICK_BACKEND=software QT_QPA_PLATFORM=xcb
settings=$XDG_CONFIG_HOME/tavlo/tavlo.conf

display=:$((20 + RANDOM % 50))
Xvfb "$display" -screen 0 800x900x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
export DISPLAY=$display
app=
step=start
shot=0

finish() {
    status=$?
    [[ -n "$app" ]] && kill "$app" 2>/dev/null
    kill "$xvfb" 2>/dev/null
    if ((status == 0)); then
        rm -rf "$out" "$home"
        echo "e2e: all steps passed"
    else
        cp -f "$settings" "$out/tavlo.conf" 2>/dev/null || true
        echo "e2e: failed at \"$step\"; pictures and settings kept in $out" >&2
    fi
}
trap finish EXIT
for _ in $(seq 50); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done

fail() {
    echo "e2e: $step: $*" >&2
    picture "failure"
    exit 1
}

picture() {
    shot=$((shot + 1))
    import -window "$window" "$out/$(printf '%02d' "$shot")-$1.png"
    last=$out/$(printf '%02d' "$shot")-$1.png
}

# The colour of one pixel of the last picture, as "r,g,b" from 0 to 255.
pixel() {
    convert "$last" -format '%[fx:int(255*u.r)],%[fx:int(255*u.g)],%[fx:int(255*u.b)]' \
        -crop "1x1+$1+$2" info:
}

# How much of a region of the last picture is lit (text or symbols on a
# dark screen), in thousandths.
lit() {
    convert "$last" -crop "$1" -colorspace Gray -threshold 40% -format '%[fx:int(1000*mean)]' info:
}

setting() { sed -n "s/^$1=//p" "$settings" | head -1; }

favorites() { "$tavlo" favorites list --json; }

launch() {
    "$tavlo" >"$out/app.log" 2>&1 &
    app=$!
    window=$(xdotool search --sync --name '^Tavlo$' | head -1)
    xdotool windowmove "$window" 0 0
    sleep 1.5
}

quit() {
    kill "$app"
    wait "$app" 2>/dev/null || true
    app=
}

tap() {
    xdotool mousemove --window "$window" "$1" "$2" click 1
    sleep "${3:-0.6}"
}

hold() {
    xdotool mousemove --window "$window" "$1" "$2" mousedown 1
    sleep 1.3
    xdotool mouseup 1
    sleep 0.6
}

# A slow drag in small steps, as a finger moves, so that nothing flicks on.
drag() {
    local x=$1 y=$2 dx=$3 dy=$4
    local steps=$(((${dx#-} > ${dy#-} ? ${dx#-} : ${dy#-}) / 3))
    xdotool mousemove --window "$window" "$x" "$y" sleep 0.2 mousedown 1 sleep 0.2
    for ((i = 1; i <= steps; i++)); do
        xdotool mousemove --window "$window" $((x + dx * i / steps)) $((y + dy * i / steps))
        sleep 0.015
    done
    sleep 0.3
    xdotool mouseup 1
    sleep 1.2
}

type_text() {
    xdotool type --delay 40 "$1"
    sleep 0.3
}

# The bottom bar of the main screen: reset, add, favorites, settings.
bar_y=824
add_x=145
fav_x=244
set_x=344
# The sort menu's first choice, and the edit dialog's OK, in the middle of the screen.
sort_by_name_y=401
edit_ok_x=275
edit_ok_y=549
# The settings: the details switch and the seventh colour button (theme 6).
details_x=45
details_y=80
theme6_x=249
theme_y=430
# The wheels, month-day-year in English: centres of the month, day and year wheels.
wheels_y=681
year_x=302
month_x=121

step="first start"
launch
picture first-start
prompt_ink=$(lit 360x300+15+80)
[[ $(setting firstStart2) == true ]] || fail "the first start was not recorded"
[[ $(setting backgroundImg) == space ]] || fail "no background picture was chosen"
# Nothing to add yet: the add button is dimmed, the others are lit.
(($(lit 120x30+85+809) < $(lit 120x30+184+809))) || fail "the add button is not dimmed"

step="pick a birth date on the wheels"
drag "$year_x" "$wheels_y" 0 110
picture picked
year=$(setting year)
[[ -n "$year" ]] && ((year < 1977)) || fail "turning the year wheel back did not report (year: $year)"
# The report fills the upper screen where the prompt was one line.
(($(lit 360x300+15+80) > 3 * prompt_ink)) || fail "no report to read"

step="add the date as a favorite"
tap "$add_x" "$bar_y"
type_text "Anna"
xdotool key Return
sleep 0.8
first_birthday="$(setting day) $(setting month) $(setting year)"
favorites | grep -q "\"name\":\"Anna\",\"birthday\":\"$first_birthday\"" ||
    fail "Anna ($first_birthday) is not among the favorites: $(favorites)"

step="add a second favorite"
drag "$month_x" "$wheels_y" 0 -75
tap "$add_x" "$bar_y"
type_text "Bob"
xdotool key Return
sleep 0.8
second_birthday="$(setting day) $(setting month) $(setting year)"
[[ $(favorites | grep -c '"name"') == 2 ]] || fail "two favorites expected: $(favorites)"
[[ "$second_birthday" != "$first_birthday" ]] || fail "the month wheel did not turn"

step="open the favorites and choose one"
tap "$fav_x" "$bar_y" 2.5
picture favorites
tap 195 73 2
picture chosen
[[ $(setting indexCount) == 0 ]] || fail "the first row was not chosen"
[[ $(setting dataSave) == false ]] || fail "the main screen did not take the chosen favorite"
chosen="$(setting day) $(setting month) $(setting year)"
first_row=$(favorites | head -1)
grep -q "\"birthday\":\"$chosen\"" <<<"$first_row" || fail "the report is not of $first_row"

step="swipe to the next favorite"
drag 320 250 -250 0
picture swiped
next="$(setting day) $(setting month) $(setting year)"
second_row=$(favorites | sed -n 2p)
grep -q "\"birthday\":\"$next\"" <<<"$second_row" || fail "the swipe did not show $second_row"

step="sort by name"
tap "$fav_x" "$bar_y" 2.5
tap 350 17 1
picture sort-menu
tap 195 "$sort_by_name_y" 2
[[ $(setting sort) == 0 ]] || fail "the order was not stored"
favorites | head -1 | grep -q '"name":"Anna"' || fail "Anna is not first by name: $(favorites)"

step="rename by a long press"
hold 195 73
picture edit
xdotool key ctrl+a BackSpace
type_text "Carla"
tap "$edit_ok_x" "$edit_ok_y" 1
favorites | head -1 | grep -q '"name":"Carla"' || fail "the rename did not stick: $(favorites)"

step="delete by a swipe"
drag 330 139 -300 0
sleep 1
[[ $(favorites | grep -c '"name"') == 1 ]] || fail "the swipe did not delete: $(favorites)"
picture after-delete

step="switch the theme and the details"
tap 33 17 2
tap "$set_x" "$bar_y" 2.5
picture settings
tap "$theme6_x" "$theme_y" 1
tap "$details_x" "$details_y" 1
[[ $(setting color) == 6 ]] || fail "theme 7 (index 6) was not stored"
[[ $(setting moreDetails) == false ]] || fail "the details switch did not write"
tap 33 17 2
picture themed-main
# Theme 6 is a deep violet gradient: red and blue over green.
IFS=, read -r r g b <<<"$(pixel 195 420)"
((r > g + 20 && b > g + 20)) || fail "the main screen is not in theme 6 ($r,$g,$b)"

step="restart"
quit
launch
picture restarted
[[ $(favorites | grep -c '"name"') == 1 ]] || fail "the favorites did not persist"
favorites | grep -q '"name":"Carla"' || fail "the renamed favorite did not persist"
[[ $(setting color) == 6 && $(setting moreDetails) == false ]] || fail "the settings did not persist"
IFS=, read -r r g b <<<"$(pixel 195 420)"
((r > g + 20 && b > g + 20)) || fail "the theme did not persist ($r,$g,$b)"
quit
