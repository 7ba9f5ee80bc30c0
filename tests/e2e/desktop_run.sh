#!/usr/bin/env bash
# End to end, as a user would: start Drav under Xvfb, wait out the splash,
# type a count, press "Load Data", type the file's path into the dialog,
# then select all and copy in the report area and compare the clipboard
# with drav-report on the same file. Keeps a screenshot of the main window,
# and ends with Ctrl+Q, after which Drav must exit cleanly.
#   desktop_run.sh BUILD_DIR SOURCE_DIR ARTEFACT_DIR
set -euo pipefail
build=$1
src=$2
# A folder of this run's own, so that two runs at once keep apart; kept
# only when the run fails.
mkdir -p "${3:-$build/e2e}"
artefacts=$(mktemp -d "${3:-$build/e2e}/run.XXXXXX")
file="$src/examples/five-models.txt"
source "$src/scripts/drive_drav.sh"

app=""
cleanup() { kill $app "$xvfb" 2>/dev/null || true; }
trap cleanup EXIT
start_xvfb
"$build/drav" >"$artefacts/drav.log" 2>&1 &
app=$!

# The main window appears when the splash gives way after 4 seconds.
wait_for_main_window || { echo "FAIL: the main window never appeared"; exit 1; }
load_file 5 "$file" || { echo "FAIL: the open-file dialog never appeared"; exit 1; }
click_in_main 345 350  # the report area
xdotool key ctrl+a ctrl+c
sleep 0.3
import -window root "$artefacts/main-window.png"

expected=$("$build/tools/drav-report" 5 "$file" | tail -n +2)
actual=$(xclip -selection clipboard -o | tr '\r' '\n' | tail -n +2)
failed=0
if [ "$expected" != "$actual" ]; then
  echo "FAIL: the report on the screen differs from drav-report"
  diff <(echo "$expected") <(echo "$actual") || true
  failed=1
fi

# Quit as a user would; the program must end by itself, and cleanly.
xdotool key ctrl+q
status=""
for _ in $(seq 100); do
  if ! kill -0 "$app" 2>/dev/null; then
    wait "$app" && status=0 || status=$?
    break
  fi
  sleep 0.1
done
app=""
if [ "$status" != "0" ]; then
  echo "FAIL: Drav did not end cleanly on Ctrl+Q (status '${status:-still running}'):"
  tail -n 40 "$artefacts/drav.log"
  failed=1
fi
[ "$failed" -eq 0 ] && rm -rf "$artefacts"
echo "desktop_run: $((1 - failed)) passed, $failed failed"
exit $failed
