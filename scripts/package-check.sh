#!/usr/bin/env bash
# Builds the Debian package from build/, installs it, checks the installed
# drav-report and drav, and removes it again, leaving nothing behind.
set -euo pipefail
cd "$(dirname "$0")/.."
(cd build && cpack >/dev/null)
deb=$(ls build/drav_*_amd64.deb | head -n 1)
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

$sudo dpkg -i "$deb" >/dev/null
for f in /usr/bin/drav /usr/bin/drav-report /usr/share/applications/drav.desktop \
         /usr/share/icons/hicolor/256x256/apps/drav.png /usr/share/icons/hicolor/16x16/apps/drav.png \
         /usr/share/man/man1/drav-report.1.gz /usr/share/mime/packages/drav.xml; do
  [ -e "$f" ] || fail "$f is not installed"
done
if command -v desktop-file-validate >/dev/null; then
  desktop-file-validate /usr/share/applications/drav.desktop || fail "the desktop entry does not validate"
fi
expected=$(tail -n +2 tests/golden/five-models.report)
actual=$(/usr/bin/drav-report 5 examples/five-models.txt | tail -n +2)
[ "$expected" = "$actual" ] || fail "the installed drav-report prints another report"
zcat /usr/share/man/man1/drav-report.1.gz | grep -q 'drav-report' || fail "the man page is empty"

# The installed program starts and puts its splash panel on the screen.
display=":$((500 + RANDOM % 400))"
Xvfb "$display" -screen 0 1024x768x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
for _ in $(seq 50); do DISPLAY=$display xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done
DISPLAY=$display /usr/bin/drav >/dev/null 2>&1 &
app=$!
shown=""
for _ in $(seq 50); do
  shown=$(DISPLAY=$display xdotool search --onlyvisible --class drav 2>/dev/null | head -n 1 || true)
  [ -n "$shown" ] && break
  sleep 0.1
done
[ -n "$shown" ] || fail "the installed drav showed no window"
kill "$app" "$xvfb" 2>/dev/null || true
wait 2>/dev/null || true

$sudo dpkg -r drav >/dev/null
for f in /usr/bin/drav /usr/bin/drav-report /usr/share/applications/drav.desktop /usr/share/mime/packages/drav.xml; do
  [ ! -e "$f" ] || fail "$f is left behind after removal"
done
echo "package_check: $(( failures == 0 ? 1 : 0 )) passed, $(( failures == 0 ? 0 : 1 )) failed"
[ "$failures" -eq 0 ]
