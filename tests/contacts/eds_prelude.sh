# SPDX-License-Identifier: MIT
# Sourced by the tests with the real evolution-data-server. Skips the test
# (status 77) where the server, its client library or dbus-run-session is
# missing.
missing=()
[[ -x /usr/libexec/evolution-source-registry ]] || missing+=(evolution-data-server)
/usr/bin/python3 -c 'import gi; gi.require_version("EBook", "1.2")' 2>/dev/null ||
    missing+=(gir1.2-ebook-1.2)
command -v dbus-run-session >/dev/null || missing+=(dbus-daemon)
if ((${#missing[@]})); then
    echo "SKIP: needs ${missing[*]} (scripts/install-deps installs them)"
    exit 77
fi

# use_home DIR: DIR is the home, with Tavlo's folders, the contacts folder
# and a private runtime folder, in Berlin.
use_home() {
    export HOME=$1 XDG_CONFIG_HOME=$1/config XDG_DATA_HOME=$1/data XDG_CACHE_HOME=$1/cache \
        XDG_RUNTIME_DIR=$1/run LANG=C.UTF-8 TZ=Europe/Berlin
    mkdir -p "$XDG_RUNTIME_DIR" "$XDG_DATA_HOME/kpeoplevcard/own" "$XDG_CONFIG_HOME/tavlo"
    chmod 700 "$XDG_RUNTIME_DIR"
}
