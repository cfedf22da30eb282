#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Tavlo following the phone's address books while it runs ("Birthdays from
# contacts"): the real evolution-data-server on a private session bus,
# changed through its own client library, and Plasma Mobile's contacts
# folder, changed as address books write it (new files, files renamed over
# old ones, deletions). Every change must reach the favorites list; a fault
# must leave the list as it was while the settings row's line says what is
# wrong. Prints how long each change took to show.
# Run by ctest as: eds_follow.sh TAVLO HELPER
set -euo pipefail
tavlo=$1
helper=$2

source "$(dirname "$0")/eds_prelude.sh"

# File modes stop no reader that is root: the faults run as nobody.
if [[ $(id -u) == 0 ]]; then
    exec setpriv --reuid=65534 --regid=65534 --clear-groups "$0" "$@"
fi

home=$(mktemp -d)
trap 'chmod -R u+rwx "$home"; rm -rf "$home"' EXIT
use_home "$home"
export QT_QPA_PLATFORM=offscreen TAVLO=$tavlo HELPER=$helper FOLLOW_HOME=$home
printf '[General]\nfollowContacts=true\n' >"$XDG_CONFIG_HOME/tavlo/tavlo.conf"

# The steps below, shared by both runs of the app.
cat >"$home/steps.sh" <<'STEPS'
folder=$XDG_DATA_HOME/kpeoplevcard
log=$FOLLOW_HOME/app.log
fail() { echo "FAIL: $*" >&2; [[ -f $log ]] && sed 's/^/  app: /' "$log" >&2; exit 1; }
now_ms() { echo $(($(date +%s%N) / 1000000)); }
start_app() { "$TAVLO" >"$log" 2>&1 & app=$!; }
stop_app() { kill "$app"; wait "$app" || true; }
# The favorites as "name<TAB>birthday" lines, sorted.
listed() { "$TAVLO" favorites list | cut -f2,3 | sort; }
want() { printf '%s\n' "$@" | sed '/^$/d' | sort; }
# expect_list WHAT LINE...: waits until the list is LINE..., prints the time.
expect_list() {
    local what=$1 start; shift
    local expected; expected=$(want "$@")
    start=$(now_ms)
    for _ in $(seq 400); do
        [[ "$(listed)" == "$expected" ]] && { echo "$what: $(($(now_ms) - start)) ms"; return; }
        sleep 0.05
    done
    echo "list:"; listed
    fail "$what: expected $expected"
}
# keeps_list WHAT LINE...: the list is LINE... and stays so for two seconds.
keeps_list() {
    local what=$1; shift
    local expected; expected=$(want "$@")
    for _ in $(seq 20); do
        [[ "$(listed)" == "$expected" ]] || { echo "list:"; listed; fail "$what: expected $expected"; }
        sleep 0.1
    done
    echo "$what: list unchanged"
}
# expect_status TEXT: the settings row's line (logged by the app) says TEXT.
expect_status() {
    for _ in $(seq 600); do
        local line; line=$(grep '^contacts: [A-Z]' "$log" | tail -1 || true)
        [[ "$line" == "contacts: $1"* ]] && { echo "  settings row: ${line#contacts: }"; return; }
        sleep 0.05
    done
    fail "the settings row never said: $1"
}
card() { # card UID NAME [BDAY]
    printf 'BEGIN:VCARD\r\nVERSION:3.0\r\nUID:%s\r\nFN:%s\r\n' "$1" "$2"
    [[ -n ${3:-} ]] && printf 'BDAY:%s\r\n' "$3"
    printf 'END:VCARD\r\n'
}
# Written beside and renamed over the old file, as address books write.
write_card() { card "$2" "$3" "${4:-}" >"$folder/.$(basename "$1").new"; mv "$folder/.$(basename "$1").new" "$folder/$1"; }
index_of() { "$TAVLO" favorites list | awk -F'\t' -v n="$1" '$2 == n { print $1 }'; }
STEPS

timeout 200 dbus-run-session -- bash -euo pipefail -c '
source "$FOLLOW_HOME/steps.sh"
start_app
expect_status "Up to date: 0 birthdays"

echo "== evolution-data-server"
"$HELPER" add-contacts "$(card jane "Jane Doe" 1985-03-12)"
expect_list "add" $'"'"'Jane Doe\t12 3 1985'"'"'
"$HELPER" modify-contact "$(card jane "Jane Smith" 1985-03-12)"
expect_list "rename" $'"'"'Jane Smith\t12 3 1985'"'"'
"$HELPER" modify-contact "$(card jane "Jane Smith" 1985-04-01)"
expect_list "new birthday" $'"'"'Jane Smith\t1 4 1985'"'"'
"$HELPER" add-contacts "$(card yara Yara 1604-04-15)"
expect_list "yearless" $'"'"'Jane Smith\t1 4 1985'"'"' $'"'"'Yara\t15 4'"'"'
"$HELPER" modify-contact "$(card jane "Jane Smith")"
expect_list "birthday removed" $'"'"'Yara\t15 4'"'"'
"$HELPER" remove-contact yara
expect_list "contact removed" ""
"$HELPER" add-contacts "$(card max Max 1990-06-01)"
expect_list "add (to delete here)" $'"'"'Max\t1 6 1990'"'"'
"$TAVLO" favorites remove "$(index_of Max)" >/dev/null
expect_list "deleted here" ""
"$HELPER" modify-contact "$(card max "Max Mustermann" 1990-06-02)"
expect_status "Up to date: 0 birthdays"
keeps_list "changed after a delete here"
grep -q "^followedContacts.*max" "$XDG_CONFIG_HOME/tavlo/tavlo.conf" ||
    grep -q "deleted" "$XDG_CONFIG_HOME/tavlo/tavlo.conf" || fail "the delete is not remembered"

echo "== contacts folder"
write_card own/ann.vcf ann Ann 19700506
expect_list "add" $'"'"'Ann\t6 5 1970'"'"'
write_card own/ann.vcf ann Anna 19700506
expect_list "rename" $'"'"'Anna\t6 5 1970'"'"'
write_card own/ann.vcf ann Anna 19700507
expect_list "new birthday" $'"'"'Anna\t7 5 1970'"'"'
write_card aunt.vcf aunt Aunt --0807
expect_list "yearless" $'"'"'Anna\t7 5 1970'"'"' $'"'"'Aunt\t7 8'"'"'
write_card own/ann.vcf ann Anna
expect_list "birthday removed" $'"'"'Aunt\t7 8'"'"'
rm "$folder/aunt.vcf"
expect_list "contact removed" ""
write_card bob.vcf bob Bob 19800101
expect_list "add (to delete here)" $'"'"'Bob\t1 1 1980'"'"'
"$TAVLO" favorites remove "$(index_of Bob)" >/dev/null
expect_list "deleted here" ""
write_card bob.vcf bob Bobby 19800102
keeps_list "changed after a delete here"

echo "== faults"
"$HELPER" add-contacts "$(card carl Carl 1990-01-02)"
write_card own/dora.vcf dora Dora 19910203
write_card eve.vcf eve Eve 19920304
base=($'"'"'Carl\t2 1 1990'"'"' $'"'"'Dora\t3 2 1991'"'"' $'"'"'Eve\t4 3 1992'"'"')
expect_list "three more" "${base[@]}"
echo "malformed card from evolution-data-server:"
"$HELPER" modify-contact "$(card carl Carl 1990-02-30)"
expect_status "A contact'"'"'s birthday cannot be read (Carl)"
keeps_list "  malformed card" "${base[@]}"
"$HELPER" modify-contact "$(card carl Carl 1990-01-05)"
expect_list "  fixed again" $'"'"'Carl\t5 1 1990'"'"' "${base[@]:1}"
base[0]=$'"'"'Carl\t5 1 1990'"'"'
echo "cut-off file:"
printf "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:eve\r\nFN:Eve Cut\r\n" >"$folder/eve.vcf"
expect_status "The contacts file eve.vcf is cut off"
keeps_list "  cut-off file" "${base[@]}"
write_card eve.vcf eve Eve 19920304
expect_status "Up to date: 3 birthdays"
echo "folder that cannot be read:"
chmod 000 "$folder/own"
expect_status "The contacts folder own/ cannot be read"
keeps_list "  unreadable folder" "${base[@]}"
chmod 755 "$folder/own"
expect_status "Up to date: 3 birthdays"
echo "address-book service crashing while followed:"
factory=$(dbus-send --session --print-reply --dest=org.freedesktop.DBus / \
    org.freedesktop.DBus.GetConnectionUnixProcessID \
    string:org.gnome.evolution.dataserver.AddressBook10 | awk "/uint32/ { print \$2 }")
children=$(pgrep -P "$factory" || true)
kill -9 $children "$factory"
expect_status "The address book service stopped"
keeps_list "  service crashed" "${base[@]}"
expect_status "Up to date: 3 birthdays"
"$HELPER" modify-contact "$(card carl "Carl Again" 1990-01-05)"
expect_list "  back, and followed" $'"'"'Carl Again\t5 1 1990'"'"' "${base[@]:1}"
stop_app
'

echo "== no address-book service"
DBUS_SESSION_BUS_ADDRESS=unix:path=$home/no-bus timeout 60 bash -euo pipefail -c '
source "$FOLLOW_HOME/steps.sh"
start_app
expect_status "The address book service does not answer"
keeps_list "no service" $'"'"'Carl Again\t5 1 1990'"'"' $'"'"'Dora\t3 2 1991'"'"' $'"'"'Eve\t4 3 1992'"'"'
stop_app
'

echo "== address-book service that takes 10 s to start"
mkdir -p "$home/services"
for file in /usr/share/dbus-1/services/org.gnome.evolution.dataserver.*.service; do
    cp "$file" "$home/services/"
done
printf '#!/bin/sh\nsleep 10\nexec /usr/libexec/evolution-addressbook-factory "$@"\n' >"$home/slow-factory"
chmod +x "$home/slow-factory"
sed -i "s|^Exec=.*|Exec=$home/slow-factory|; /^SystemdService=/d" \
    "$home/services/org.gnome.evolution.dataserver.AddressBook10.service"
cat >"$home/bus.conf" <<CONF
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=$home</listen>
  <auth>EXTERNAL</auth>
  <servicedir>$home/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
CONF
timeout 90 dbus-run-session --config-file="$home/bus.conf" -- bash -euo pipefail -c '
source "$FOLLOW_HOME/steps.sh"
start_app
expect_status "Reading the address books"
keeps_list "slow service" $'"'"'Carl Again\t5 1 1990'"'"' $'"'"'Dora\t3 2 1991'"'"' $'"'"'Eve\t4 3 1992'"'"'
started=$(now_ms)
expect_status "Up to date: 3 birthdays"
echo "  followed again after $(($(now_ms) - started)) ms more"
"$HELPER" modify-contact "$(card carl "Carl Slow" 1990-01-05)"
expect_list "  then followed" $'"'"'Carl Slow\t5 1 1990'"'"' $'"'"'Dora\t3 2 1991'"'"' $'"'"'Eve\t4 3 1992'"'"'
stop_app
'
