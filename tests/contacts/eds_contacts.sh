#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Tavlo with the real evolution-data-server on a private session bus: cards
# added through evolution-data-server's own address-book library are
# imported by `tavlo favorites import --contacts`, beside a card in Plasma
# Mobile's folder. Run by ctest as: eds_contacts.sh TAVLO HELPER
set -euo pipefail
tavlo=$1
helper=$2

source "$(dirname "$0")/eds_prelude.sh"

home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
use_home "$home"
printf 'BEGIN:VCARD\r\nVERSION:4.0\r\nFN:Folder Friend\r\nBDAY:19700506\r\nEND:VCARD\r\n' \
    >"$XDG_DATA_HOME/kpeoplevcard/own/friend.vcf"
# A birthday without a year, as vCard 4.0 writes it.
printf 'BEGIN:VCARD\r\nVERSION:4.0\r\nFN:Folder Aunt\r\nBDAY:--0807\r\nEND:VCARD\r\n' \
    >"$XDG_DATA_HOME/kpeoplevcard/aunt.vcf"

# "Show birthdays in the calendar" is on: every change publishes the calendar.
printf '[General]\nbirthdaysInCalendar=true\n' >"$XDG_CONFIG_HOME/tavlo/tavlo.conf"

# No evolution-data-server (no session bus at all): the folder alone, no error.
summary=$(DBUS_SESSION_BUS_ADDRESS=unix:path=$home/no-bus "$tavlo" favorites import --contacts)
[[ "$summary" == "tavlo: 2 added, 0 already there, 0 skipped" ]] ||
    { echo "FAIL: without a bus: $summary" >&2; exit 1; }

export TAVLO=$tavlo HELPER=$helper
exec timeout 240 dbus-run-session -- bash -euo pipefail -c '
    "$HELPER" add-contacts \
        "BEGIN:VCARD
VERSION:3.0
FN:Jane Doe
N:Doe;Jane;;;
BDAY:1985-03-12
END:VCARD" \
        "BEGIN:VCARD
VERSION:3.0
N:Иванов;Иван;;;
BDAY:1984-02-29
END:VCARD" \
        "BEGIN:VCARD
VERSION:3.0
FN:No Birthday
END:VCARD" \
        "BEGIN:VCARD
VERSION:3.0
FN:Yara
BDAY:1604-04-15
END:VCARD"
    summary=$("$TAVLO" favorites import --contacts)
    echo "$summary"
    expected="tavlo: 3 added, 2 already there, 1 skipped (1 no birthday)"
    [[ "$summary" == "$expected" ]] || { echo "FAIL: expected: $expected" >&2; exit 1; }
    listed=$("$TAVLO" favorites list | cut -f2,3 | sort)
    echo "$listed"
    [[ "$listed" == "$(printf "Folder Aunt\t7 8\nFolder Friend\t6 5 1970\nJane Doe\t12 3 1985\nYara\t15 4\nИван Иванов\t29 2 1984")" ]] ||
        { echo "FAIL: favorites as listed above" >&2; exit 1; }
    again=$("$TAVLO" favorites import --contacts)
    [[ "$again" == "tavlo: 0 added, 5 already there, 1 skipped (1 no birthday)" ]] ||
        { echo "FAIL: second import: $again" >&2; exit 1; }
    # The published calendar, as evolution-data-server reads it through its
    # calendar interface.
    events=$("$HELPER" calendar-events tavlo-birthdays | sort)
    echo "$events"
    for expected in \
        "\"summary\": \"Jane Doe'"'"'s birthday\", \"start\": \"1985-03-12\", \"allDay\": true, \"rrule\": [\"FREQ=YEARLY\"]" \
        "\"start\": \"1984-02-29\", \"allDay\": true, \"rrule\": [\"FREQ=YEARLY;BYYEARDAY=60\"]" \
        "\"summary\": \"Folder Friend'"'"'s birthday\"" \
        "\"summary\": \"Yara'"'"'s birthday\", \"start\": \"$(date +%Y)-04-15\""; do
        [[ "$events" == *"$expected"* ]] || { echo "FAIL: no event with $expected" >&2; exit 1; }
    done
    [[ $(wc -l <<<"$events") == 5 ]] || { echo "FAIL: not 5 events" >&2; exit 1; }
'
