#!/usr/bin/env bash
# drav started from a terminal without a display, as over ssh to a server:
# one line that says what to do instead and status 1, never Qt's abort and
# its core; --help and --version answer and end. A platform that the user
# chose for Qt still opens the windows.
set -u
bin=$(realpath "$1")
source "$(dirname "$0")/checks.sh"

headless() { env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM "$@"; }

# A core, if one were dumped, would land in the current folder.
(cd "$tmp" && ulimit -c unlimited && headless "$bin" >"$tmp/out" 2>"$tmp/err")
check "without a display" 1 $?
check "one line on stderr" 1 "$(wc -l <"$tmp/err")"
check_text "says there is no display" "$tmp/err" "drav: Drav is a desktop program and found no display"
check_text "points to drav-report" "$tmp/err" "drav-report COUNT FILE gives the same report"
check "nothing on stdout" 0 "$(wc -c <"$tmp/out")"
check "no core dumped" "" "$(ls "$tmp" | grep -i core)"

for option in --help --version; do
  headless "$bin" "$option" >"$tmp/out" 2>"$tmp/err"
  check "$option without a display" 0 $?
  check "$option: nothing on stderr" 0 "$(wc -c <"$tmp/err")"
done
headless "$bin" --version >"$tmp/out"
check "version line" "drav 2.1" "$(cat "$tmp/out")"
headless "$bin" --help >"$tmp/out"
check_text "help: usage" "$tmp/out" "Usage: drav"
check_text "help: the manual" "$tmp/out" "man drav"
check_text "help: drav-report" "$tmp/out" "drav-report COUNT FILE"

# Qt's own ways of choosing a platform still reach the windows, which then
# run until stopped.
headless timeout 5 "$bin" -platform offscreen >/dev/null 2>&1
check "-platform offscreen runs" 124 $?
headless timeout 5 env QT_QPA_PLATFORM=offscreen "$bin" >/dev/null 2>&1
check "QT_QPA_PLATFORM=offscreen runs" 124 $?
finish drav_terminal
