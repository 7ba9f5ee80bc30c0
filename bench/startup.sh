#!/usr/bin/env bash
# Start-up speed and memory of the desktop program, under Xvfb:
#  - the time from starting the process to the splash panel being on the
#    screen (median of RUNS starts; goal: under 150 ms);
#  - the peak resident memory of a whole use: splash, count, one report of
#    99 models, quit (goal: under 60 MB).
#   bench/startup.sh [BUILD_DIR]    (RUNS=20 by default)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
runs=${RUNS:-20}
source scripts/drive_drav.sh
trap 'kill "$xvfb" 2>/dev/null || true' EXIT
start_xvfb

visible() { xdotool search --onlyvisible --class drav 2>/dev/null | head -n 1; }

# The moment the panel is mapped comes from one X client that watches the
# root window (a client polling for it would load the server with
# connections of its own).
coproc WATCH { stdbuf -oL xev -root -event substructure; }
mapped() {  # waits for the next window to be mapped; false if drav ended first
  local line
  while IFS= read -r -t 5 line <&"${WATCH[0]}"; do
    [[ $line == MapNotify* ]] && return 0
  done
  return 1
}

# One start first, so that fonts and libraries are in the caches as on a
# desktop in use; then the measured starts.
times=()
for run in $(seq 0 "$runs"); do
  start=$(date +%s%N)
  "$build/drav" >/tmp/drav-start.log 2>&1 &
  app=$!
  mapped || { echo "drav showed nothing (start $run):"; cat /tmp/drav-start.log; exit 1; }
  shown=$(date +%s%N)
  kill "$app"; wait "$app" 2>/dev/null || true
  [ "$run" -gt 0 ] && times+=($(( (shown - start) / 1000000 )))
done
kill "$WATCH_PID" 2>/dev/null || true
sorted=($(printf '%s\n' "${times[@]}" | sort -n))
echo "splash on screen: median ${sorted[$(( ${#sorted[@]} / 2 ))]} ms, best ${sorted[0]} ms, worst ${sorted[-1]} ms over $runs starts"

# A whole use, measured by /usr/bin/time.
/usr/bin/time -f '%M' -o /tmp/drav-peak.txt "$build/drav" >/tmp/drav-use.log 2>&1 &
use=$!
until [ -n "$(visible)" ]; do sleep 0.01; done
sleep 0.2
xdotool key space  # the splash gives way at the first key
wait_for_main_window
load_file 99 "$PWD/examples/ninety-nine-models.txt"
xdotool key ctrl+q
wait "$use" || { echo "drav ended with status $? on Ctrl+Q:"; cat /tmp/drav-use.log; exit 1; }
echo "peak resident memory of a whole use: $(( $(cat /tmp/drav-peak.txt) / 1024 )) MB"
