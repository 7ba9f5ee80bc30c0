#!/usr/bin/env bash
# Takes the README's picture of the main window with a report, under Xvfb:
# Drav is started, given the five-model example, and the window is captured.
#   scripts/screenshot.sh [BUILD_DIR] [OUTPUT_PNG]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
out=${2:-docs/main-window.png}
display=":$((700 + RANDOM % 200))"
Xvfb "$display" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
export DISPLAY=$display
app=""
trap 'kill $app $xvfb 2>/dev/null || true' EXIT
for _ in $(seq 50); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done
"$build/drav" >/dev/null 2>&1 &
app=$!
until xdotool search --onlyvisible --class drav >/dev/null 2>&1; do sleep 0.05; done
sleep 0.3
xdotool key space
main=""
until [ -n "$main" ]; do main=$(xdotool search --onlyvisible --name '^Drav$' 2>/dev/null | head -n 1 || true); done
sleep 0.3
menu=$(( $(xdotool getwindowgeometry "$main" | awk '/Geometry/ {split($2, g, "x"); print g[2]}') - 600 ))
xdotool mousemove --window "$main" 245 $((152 + menu)) click 1
xdotool type "5"
xdotool mousemove --window "$main" 108 $((555 + menu)) click 1
sleep 0.8
xdotool type "$PWD/examples/five-models.txt"
xdotool key Return
sleep 0.8
xdotool mousemove 0 0
import -window "$main" "$out"
echo "wrote $out"
