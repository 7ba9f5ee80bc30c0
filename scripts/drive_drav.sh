# Shared by the scripts that drive Drav on an X server of their own (the
# end-to-end test, the start-up benchmark, the screenshot). Source it; it
# defines functions and changes nothing by itself.

# Starts Xvfb on a display of its own and exports DISPLAY; sets $xvfb. The
# server picks a free display itself and names it on a file descriptor
# (-displayfd) once it is ready, so no other server can take the display
# between a check and the start. Drav must then run on that server, whatever
# platform the caller's environment asks Qt for. -noreset: by default the
# server resets each time its last client leaves (the accessibility bus's
# launcher, a quick xdotool), and a client that connects during a reset, as
# Drav starting on a busy machine may, is turned away.
start_xvfb() {
  local named
  named=$(mktemp)
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$named" >/dev/null 2>&1 &
  xvfb=$!
  for _ in $(seq 300); do
    if [ "$(wc -l <"$named")" -ge 1 ]; then
      export DISPLAY=":$(head -n 1 "$named")"
      rm -f "$named"
      unset QT_QPA_PLATFORM
      return 0
    fi
    kill -0 "$xvfb" 2>/dev/null || break
    sleep 0.1
  done
  rm -f "$named"
  echo "Xvfb did not come up" >&2
  return 1
}

# Prints the first visible window whose title matches the pattern, other than
# the main window, once it is there; fails after ten seconds without one.
wait_for_window() {  # title pattern
  local found
  for _ in $(seq 100); do
    found=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | grep -v "^${main:-none}$" | head -n 1 || true)
    [ -n "$found" ] && { echo "$found"; return 0; }
    sleep 0.1
  done
  return 1
}

# Waits for the main window; sets $main and $menu (the height of its menu
# bar, above the 600-pixel content area).
wait_for_main_window() {
  main=""
  main=$(wait_for_window '^Drav$') || return 1
  sleep 0.3
  menu=$(( $(xdotool getwindowgeometry "$main" | awk '/Geometry/ {split($2, g, "x"); print g[2]}') - 600 ))
}

# Clicks at x, y of the main window's content area.
click_in_main() {
  xdotool mousemove --window "$main" "$1" $(( $2 + menu )) click 1
}

# Types the count, presses "Load Data" and types the file's path into the
# open-file dialog, as a user would.
load_file() {  # count, path
  click_in_main 245 152
  xdotool type --delay 50 "$1"
  click_in_main 108 555
  wait_for_window 'Open|Find File' >/dev/null || return 1
  sleep 0.3
  xdotool type --delay 10 "$2"
  xdotool key Return
  sleep 1
}
