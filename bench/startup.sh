#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Time from process start to the first frame of the main screen, the processor
# time all threads used by then (what a slow core has to give), and peak
# memory, under Xvfb with Qt Quick's software renderer; medians of RUNS runs,
# side by side: the smallest Qt Quick Controls window (the floor), then Tavlo
# with each number of favorites, and its first frame against that with none.
#   bench/startup.sh [RUNS] [FAVORITES...]      (default: 9 runs; 0 1000 10000)
# With TAVLO_BENCH_CPU=25 each start (not Xvfb) gets a quarter of one core,
# through a cgroup of its own (as root), for what a phone's slow cores see.
# Both run on a session message bus of their own, as on a phone.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# A phone's session always has its message bus, which Tavlo talks to (its
# reminders, the file chooser): without one, each start would first launch
# a bus of its own, which no phone does.
if [[ -z ${DBUS_SESSION_BUS_ADDRESS:-} ]]; then
    exec dbus-run-session -- "$0" "$@"
fi
runs=${1:-9}
shift || true
counts=("$@")
((${#counts[@]} > 0)) || counts=(0 1000 10000)
display=:$((90 + RANDOM % 9))
Xvfb "$display" -screen 0 1024x900x24 >/dev/null 2>&1 &
xvfb=$!
work=$(mktemp -d)
trap 'kill $xvfb 2>/dev/null; rm -rf "$work"' EXIT
sleep 1
export DISPLAY=$display QT_QUICK_BACKEND=software TAVLO_STARTUP_TRACE=1
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$work/runtime} XDG_DATA_HOME=$work/data
mkdir -p "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"

# throttled COMMAND...: COMMAND with TAVLO_BENCH_CPU percent of one core, in
# short periods so that the process is slowed evenly rather than stopped
# for long stretches.
throttled=()
if [[ -n ${TAVLO_BENCH_CPU:-} ]]; then
    if [[ -d /sys/fs/cgroup/cpu ]]; then
        group=/sys/fs/cgroup/cpu/tavlo-bench-$$
        mkdir "$group"
        echo 10000 >"$group/cpu.cfs_period_us"
        echo $((TAVLO_BENCH_CPU * 100)) >"$group/cpu.cfs_quota_us"
    else
        group=/sys/fs/cgroup/tavlo-bench-$$
        mkdir "$group"
        echo "$((TAVLO_BENCH_CPU * 100)) 10000" >"$group/cpu.max"
    fi
    # The last start may still be leaving the group when the script ends.
    trap 'kill $xvfb 2>/dev/null; rm -rf "$work"
          for _ in 1 2 3 4 5 6 7 8 9 10; do rmdir "$group" 2>/dev/null && break; sleep 0.5; done' EXIT
    throttled=(sh -c 'echo $$ >"$0/cgroup.procs" && exec "$@"' "$group")
fi

median() { printf '%s\n' "$@" | sort -n | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }

# once COMMAND...: one start; prints its first frame (ms from start), the
# processor time all its threads used by then (ms), and peak memory (MB).
once() {
    local start output frame cpu peak
    start=$(date +%s%3N)
    output=$("${throttled[@]}" "$@")
    frame=$(awk '/^first-frame-epoch-ms/ {print $2}' <<<"$output")
    cpu=$(awk '/^first-frame-cpu-ms/ {print $2}' <<<"$output")
    peak=$(awk '/^peak-rss-kb/ {print $2}' <<<"$output")
    echo "$((frame - start)) $cpu $((peak / 1024))"
}

# A settings file with N favorites, as the app keeps them, past its first start:
# each with its identity (rows of earlier versions, without one, have theirs
# derived at every start until the list is next written; TAVLO_BENCH_OLD_ROWS=1
# writes those).
# The main screen shows 15 June 1985 in every run: the last favorite's date,
# and the one stored when there are none. Where a date stands on the wheels
# changes how many labels they make, which is not what is measured.
settings_with() {
    local n=$1 dir=$work/config-$1
    mkdir -p "$dir/tavlo"
    awk -v n="$n" -v old="${TAVLO_BENCH_OLD_ROWS:-}" 'BEGIN {
        srand(20261123)
        print "[General]\nfirstStart2=true\nmoreDetails=true\nstar=true\nday=15\nmonth=6\nyear=1985\n\n[person]"
        for (i = 1; i <= n; i++) {
            day = 1 + int(rand() * 28); month = 1 + int(rand() * 12); year = 1930 + int(rand() * 93)
            if (i == n) { day = 15; month = 6; year = 1985 }
            printf "%d\\1=Person %d\n%d\\2=%d %d %d\n", i, int(rand() * 100000), i, day, month, year
            if (old)
                printf "%d\\size=2\n", i
            else
                printf "%d\\3=%08x-0000-4000-8000-%012x\n%d\\size=3\n", i, (i * 2654435761) % 4294967296, i, i
        }
        print "size=" n
    }' >"$dir/tavlo/tavlo.conf"
    echo "$dir"
}

echo "runs: $runs (medians), $(nproc) cores, Xvfb, software renderer${TAVLO_BENCH_CPU:+, $TAVLO_BENCH_CPU% of one core}"
# The configurations take turns, run after run, so that a machine busy for
# a while slows them alike.
labels=("minimal Qt Quick window")
dirs=("")
for n in "${counts[@]}"; do
    labels+=("Tavlo, $n favorites")
    dirs+=("$(settings_with "$n")")
done
declare -A frames cpus peaks
for ((i = 0; i < runs; i++)); do
    for c in "${!labels[@]}"; do
        if ((c == 0)); then
            read -r frame cpu peak < <(once "$root/build/bench/minimal_window")
        else
            read -r frame cpu peak < <(XDG_CONFIG_HOME=${dirs[c]} once "$root/build/tavlo")
        fi
        frames[$c]+="$frame "
        cpus[$c]+="$cpu "
        peaks[$c]+="$peak "
    done
done
for c in "${!labels[@]}"; do
    # shellcheck disable=SC2086
    frame=$(median ${frames[$c]})
    # shellcheck disable=SC2086
    cpu=$(median ${cpus[$c]})
    # shellcheck disable=SC2086
    peak=$(median ${peaks[$c]})
    ((c == 0)) && bare=$frame bareCpu=$cpu bareMemory=$peak
    ((c == 1)) && none=$frame
    # Against the bare window, and against Tavlo with no favorites.
    ratio="" cpuRatio=""
    ((c >= 1)) && ratio=$(awk -v a="$frame" -v b="$bare" -v n="$none" -v m="$((peak - bareMemory))" \
        'BEGIN {printf "(%.2fx bare, %.2fx none, %+d MB)", a / b, a / n, m}')
    ((c >= 1)) && cpuRatio=$(awk -v a="$cpu" -v b="$bareCpu" 'BEGIN {printf "(%.2fx)", a / b}')
    printf '%-28s first frame %5d ms %-34s  processor %5.1f ms %-8s  peak memory %4d MB   (frames: %s)\n' \
        "${labels[c]}" "$frame" "$ratio" "$cpu" "$cpuRatio" "$peak" "${frames[$c]% }"
done
