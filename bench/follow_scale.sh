#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Following a large address book through the real evolution-data-server on a
# private session bus: 2,000 contacts, 1,500 with birthdays, added in one
# go while Tavlo runs. Prints how long the first follow took to reach the
# favorites file, how long single changed contacts took (as seen from
# outside, by `tavlo favorites list`), and every hold-up of the interface
# thread over 50 ms after start-up (TAVLO_STALL_TRACE), which is what would
# delay a frame.
#   bench/follow_scale.sh [TAVLO] [CHANGES]      (default: build/tavlo, 5)
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
tavlo=$(realpath "${1:-$root/build/tavlo}")
changes=${2:-5}
helper=$root/tests/contacts/eds_helper.py
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME=$home XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data \
    XDG_CACHE_HOME=$home/cache XDG_RUNTIME_DIR=$home/run LANG=C.UTF-8 TZ=Europe/Berlin \
    QT_QPA_PLATFORM=offscreen TAVLO_STALL_TRACE=1 TAVLO=$tavlo HELPER=$helper CHANGES=$changes \
    LOG=$home/app.log
mkdir -p "$XDG_RUNTIME_DIR" "$XDG_CONFIG_HOME/tavlo"
chmod 700 "$XDG_RUNTIME_DIR"
printf '[General]\nfollowContacts=true\n' >"$XDG_CONFIG_HOME/tavlo/tavlo.conf"

dbus-run-session -- bash -euo pipefail -c '
now_ms() { echo $(($(date +%s%N) / 1000000)); }
count() { "$TAVLO" favorites list | wc -l; }
# The last line the app logged, when it is a status of the settings row.
"$TAVLO" >"$LOG" 2>&1 & app=$!
for _ in $(seq 600); do grep -q "^contacts: Up to date" "$LOG" && break; sleep 0.05; done
ready=$(now_ms)
echo "app following; hold-ups while starting: $(grep -c "^stall:" "$LOG" || true)"
before=$(grep -c "^stall:" "$LOG" || true)

start=$(now_ms)
"$HELPER" add-many 2000 1500
added=$(now_ms)
for _ in $(seq 1200); do [[ $(count) == 1500 ]] && break; sleep 0.1; done
[[ $(count) == 1500 ]] || { echo "FAIL: the first follow never completed" >&2; exit 1; }
echo "2,000 contacts added to the address book in $((added - start)) ms"
echo "first follow: 1,500 favorites listed $(($(now_ms) - start)) ms after the add began" \
     "($(($(now_ms) - added)) ms after it returned)"

for i in $(seq "$CHANGES"); do
    card=$(printf "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:person-%d\r\nFN:Changed %d\r\nBDAY:1980-01-0%d\r\nEND:VCARD\r\n" "$i" "$i" "$i")
    start=$(now_ms)
    "$HELPER" modify-contact "$card"
    changed=$(now_ms)
    shows() { [[ $("$TAVLO" favorites list) == *"Changed $i"* ]]; }
    for _ in $(seq 3000); do shows && break; sleep 0.02; done
    shows || { echo "FAIL: change $i never showed" >&2; exit 1; }
    echo "change $i: listed $(($(now_ms) - start)) ms after the change began" \
         "($(($(now_ms) - changed)) ms after the address book took it)"
done
sleep 1
kill "$app"; wait "$app" || true
held=$(grep "^stall:" "$LOG" | tail -n +$((before + 1)) || true)
echo "hold-ups of the interface thread over 50 ms while following: ${held:-none}"
'
