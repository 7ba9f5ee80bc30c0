#!/usr/bin/env bash
# Memory over repeated use of the desktop program, under Xvfb: RUNS runs
# (40 by default) of the 99-model example, each followed by Clear, driven
# with xdotool as a user would. Prints the resident memory (ps -o rss)
# after the first run and after the last, and the growth between them;
# goal: under 300 KB over 40 runs.
#   bench/memory_runs.sh [BUILD_DIR]    (RUNS=40 by default)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
runs=${RUNS:-40}
file="$PWD/examples/ninety-nine-models.txt"
source scripts/drive_drav.sh
app=""
trap 'kill $app "$xvfb" 2>/dev/null || true' EXIT
start_xvfb
"$build/drav" >/tmp/drav-memory.log 2>&1 &
app=$!
until xdotool search --onlyvisible --pid "$app" >/dev/null 2>&1; do sleep 0.05; done
sleep 0.2
xdotool key space  # the splash gives way at the first key
wait_for_main_window

rss() { ps -o rss= -p "$app" | tr -d ' '; }
one_run() {
  load_file 99 "$file" || { echo "the open-file dialog never appeared"; exit 1; }
  click_in_main 350 556  # Clear
  sleep 0.2
}
one_run
first=$(rss)
for _ in $(seq 2 "$runs"); do one_run; done
last=$(rss)
echo "resident memory after run 1: $first KB, after run $runs: $last KB, growth $((last - first)) KB over $((runs - 1)) runs with Clear"
