#!/usr/bin/env bash
# Time from process start to the first frame of the main screen, and peak
# memory, under Xvfb with Qt Quick's software renderer; medians of N runs.
#   bench/startup.sh [RUNS]
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
runs=${1:-9}
display=:$((90 + RANDOM % 9))
Xvfb "$display" -screen 0 1024x900x24 >/dev/null 2>&1 &
xvfb=$!
trap 'kill $xvfb 2>/dev/null' EXIT
sleep 1

config=$(mktemp -d)
export XDG_CONFIG_HOME=$config XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
export DISPLAY=$display QT_QUICK_BACKEND=software TAVLO_STARTUP_TRACE=1
"$root/build/tavlo" >/dev/null # the first start writes the settings file

frames=() peaks=()
for ((i = 0; i < runs; i++)); do
    start=$(date +%s%3N)
    output=$("$root/build/tavlo")
    frame=$(awk '/^first-frame-epoch-ms/ {print $2}' <<<"$output")
    peak=$(awk '/^peak-rss-kb/ {print $2}' <<<"$output")
    frames+=($((frame - start)))
    peaks+=($((peak / 1024)))
done
median() { printf '%s\n' "$@" | sort -n | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }
echo "runs: $runs"
echo "first frame (ms): ${frames[*]}  median $(median "${frames[@]}")"
echo "peak memory (MB): ${peaks[*]}  median $(median "${peaks[@]}")"
rm -rf "$config"
