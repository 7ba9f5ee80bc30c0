#!/usr/bin/env bash
# Installs what is missing, builds, and starts Drav. On a machine without a
# display (a server over ssh) it shows the work on the terminal instead, and
# says how to see the window.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}${QT_QPA_PLATFORM:-}" ]; then
  echo "No display here: Drav's window needs one. Its report of examples/five-models.txt, by drav-report:"
  echo
  ./build/tools/drav-report 5 examples/five-models.txt
  cat <<'TEXT'

To see the window, start Drav in a desktop session (bash scripts/start.sh),
or log in with ssh -X and run build/drav, or draw it on a virtual X server
and save a picture of it:
  bash scripts/screenshot.sh build drav-window.png
TEXT
  exit 0
fi
exec ./build/drav
