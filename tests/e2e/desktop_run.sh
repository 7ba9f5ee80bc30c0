#!/usr/bin/env bash
# End to end, as a user would: start Drav under Xvfb, press on the splash,
# type a count, press "Load Data", type the file's path into the dialog,
# then select all and copy in the report area and compare the clipboard
# with drav-report on the same file. The same selection is copied again
# through the Edit menu opened with the mouse; digits typed after a second
# "Load Data" must land in the count; "Information" must open its window
# at 550 x 500 under its menu bar; a screen reader must find each control
# by name through AT-SPI. Keeps screenshots, and ends with Ctrl+Q in the
# Information window, after which Drav must exit cleanly.
#   desktop_run.sh BUILD_DIR SOURCE_DIR ARTEFACT_DIR
set -euo pipefail
# A session bus of this run's own, for the accessibility bus beside it.
if [ -z "${DRAV_E2E_SESSION_BUS:-}" ]; then
  DRAV_E2E_SESSION_BUS=1 exec dbus-run-session -- bash "$0" "$@"
fi
build=$1
src=$2
# A folder of this run's own, so that two runs at once keep apart; kept
# only when the run fails.
mkdir -p "${3:-$build/e2e}"
artefacts=$(mktemp -d "${3:-$build/e2e}/run.XXXXXX")
file="$src/examples/five-models.txt"
source "$src/scripts/drive_drav.sh"

app=""
a11y=""
cleanup() { kill $app $a11y "$xvfb" 2>/dev/null || true; }
trap cleanup EXIT
failed=0
fail() { echo "FAIL: $*"; failed=1; }
start_xvfb
# What a screen reader sees comes over AT-SPI, on a bus of its own.
/usr/libexec/at-spi-bus-launcher --launch-immediately >/dev/null 2>&1 &
a11y=$!
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1

# With a display, --help and --version answer on the terminal and open no
# window: a window would keep drav running into the timeout. (Without one,
# drav_terminal_test.sh.)
for option in --help --version; do
  status=0
  timeout 10 "$build/drav" "$option" >"$artefacts/answer.txt" 2>&1 || status=$?
  [ "$status" = 0 ] || fail "drav $option with a display ended with status $status"
  grep -q 'drav' "$artefacts/answer.txt" || fail "drav $option with a display printed nothing"
done

"$build/drav" >"$artefacts/drav.log" 2>&1 &
app=$!

# A press on the splash hands over to the main window at once; its timer
# is the window suite's to check.
splash=""
for _ in $(seq 100); do
  splash=$(xdotool search --onlyvisible --pid "$app" 2>/dev/null | head -n 1 || true)
  [ -n "$splash" ] && break
  sleep 0.1
done
[ -n "$splash" ] || { echo "FAIL: the splash never appeared"; exit 1; }
xdotool mousemove --window "$splash" 20 20 click 1
wait_for_main_window || { echo "FAIL: the main window never appeared after a press on the splash"; exit 1; }
load_file 5 "$file" || { echo "FAIL: the open-file dialog never appeared"; exit 1; }
click_in_main 345 350  # the report area
xdotool key ctrl+a ctrl+c
sleep 0.3
import -window root "$artefacts/main-window.png"

expected=$("$build/tools/drav-report" 5 "$file" | tail -n +2)
report() { xclip -selection clipboard -o | tr '\r' '\n' | tail -n +2; }
actual=$(report)
if [ "$expected" != "$actual" ]; then
  fail "the report on the screen differs from drav-report"
  diff <(echo "$expected") <(echo "$actual") || true
fi

# The Edit menu opened with the mouse, the selection still in the report:
# Copy is live, and choosing it by its access key copies the report again.
printf 'stale' | xclip -selection clipboard
xdotool mousemove --window "$main" 56 $(( menu / 2 )) click 1  # "Edit" in the bar
sleep 0.5
import -window root "$artefacts/edit-menu.png"
xdotool key c
sleep 0.3
[ "$(report)" = "$expected" ] || fail "Copy from the Edit menu did not copy the selected report"

# A second run from an emptied count: the digit typed after it goes to the
# count, which then reads back through Select All and Copy.
click_in_main 245 152
xdotool key BackSpace BackSpace Delete Delete
load_file 5 "$file" || fail "the open-file dialog never appeared a second time"
xdotool type 3
xdotool key ctrl+a ctrl+c
sleep 0.3
count=$(xclip -selection clipboard -o)
[ "$count" = "53" ] || fail "typed after Load Data, the count reads '$count', not 53"

# Information opens with a content area of 550 x 500 under its menu bar.
click_in_main 604 556
info=$(wait_for_window '^Info$') || fail "Information never opened"
sleep 0.3
import -window root "$artefacts/information.png"
size=$(xdotool getwindowgeometry "$info" 2>/dev/null | awk '/Geometry/ {print $2}')
[ "$size" = "550x$(( 500 + menu ))" ] || fail "Information opened at '$size', not 550x$(( 500 + menu ))"

# With the report and the help open, a screen reader finds every control
# by a name and a description, and the captions as labels.
/usr/bin/python3 "$src/tests/e2e/accessible_names.py" "$app" || fail "accessible names, as AT-SPI reads them"

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
  fail "Drav did not end cleanly on Ctrl+Q (status '${status:-still running}'):"
  tail -n 40 "$artefacts/drav.log"
fi
[ "$failed" -eq 0 ] && rm -rf "$artefacts"
echo "desktop_run: $((1 - failed)) passed, $failed failed"
exit $failed
