#!/usr/bin/env bash
# Takes the README's picture of the main window with a report, under Xvfb:
# Drav is started, given the five-model example, and the window is captured.
#   scripts/screenshot.sh [BUILD_DIR] [OUTPUT_PNG]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
out=${2:-docs/main-window.png}
source scripts/drive_drav.sh
app=""
trap 'kill $app "$xvfb" 2>/dev/null || true' EXIT
start_xvfb
"$build/drav" >/dev/null 2>&1 &
app=$!
until xdotool search --onlyvisible --class drav >/dev/null 2>&1; do sleep 0.05; done
sleep 0.3
xdotool key space  # the splash gives way at the first key
wait_for_main_window
load_file 5 "$PWD/examples/five-models.txt"
xdotool mousemove 0 0
import -window "$main" "$out"
echo "wrote $out"
