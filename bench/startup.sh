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
display=":$((600 + RANDOM % 300))"
Xvfb "$display" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
trap 'kill $xvfb 2>/dev/null || true' EXIT
export DISPLAY=$display
for _ in $(seq 50); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done

visible() { xdotool search --onlyvisible --class drav 2>/dev/null | head -n 1; }

# One start first, so that fonts and libraries are in the caches as on a
# desktop in use; then the measured starts.
times=()
for run in $(seq 0 "$runs"); do
  start=$(date +%s%N)
  "$build/drav" >/tmp/drav-start.log 2>&1 &
  app=$!
  # Polled every 20 ms, so that the polling costs the server little.
  until [ -n "$(visible)" ]; do
    kill -0 "$app" 2>/dev/null || { echo "drav ended before its splash showed (start $run):"; cat /tmp/drav-start.log; exit 1; }
    sleep 0.02
  done
  shown=$(date +%s%N)
  kill "$app"; wait "$app" 2>/dev/null || true
  # Xvfb refuses a new client now and then right after one was killed.
  sleep 0.3
  [ "$run" -gt 0 ] && times+=($(( (shown - start) / 1000000 )))
done
sorted=($(printf '%s\n' "${times[@]}" | sort -n))
echo "splash on screen: median ${sorted[$(( ${#sorted[@]} / 2 ))]} ms, best ${sorted[0]} ms, worst ${sorted[-1]} ms over $runs starts"

# A whole use, measured by /usr/bin/time.
/usr/bin/time -f '%M' -o /tmp/drav-peak.txt "$build/drav" >/tmp/drav-use.log 2>&1 &
use=$!
until [ -n "$(visible)" ]; do sleep 0.01; done
sleep 0.2
xdotool key space  # the splash gives way at the first key
main=""
until [ -n "$main" ]; do main=$(xdotool search --onlyvisible --name '^Drav$' 2>/dev/null | head -n 1 || true); done
sleep 0.3
menu=$(( $(xdotool getwindowgeometry "$main" | awk '/Geometry/ {split($2, g, "x"); print g[2]}') - 600 ))
xdotool mousemove --window "$main" 245 $((152 + menu)) click 1
xdotool type "99"
xdotool mousemove --window "$main" 108 $((555 + menu)) click 1
sleep 0.8
xdotool type "$PWD/examples/ninety-nine-models.txt"
xdotool key Return
sleep 0.8
xdotool key ctrl+q
wait "$use" || { echo "drav ended with status $? on Ctrl+Q:"; cat /tmp/drav-use.log; exit 1; }
echo "peak resident memory of a whole use: $(( $(cat /tmp/drav-peak.txt) / 1024 )) MB"
