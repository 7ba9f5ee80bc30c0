# Shared by the command-line checks. Source it: it makes $tmp, a folder of
# this run's own that goes at exit, and counts checks in $passes and
# $failures; `finish NAME` prints the closing count and gives the status.
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
failures=0
passes=0

check() {  # name, expected, actual
  if [ "$2" = "$3" ]; then passes=$((passes + 1)); else echo "FAIL: $1 (expected '$2', got '$3')"; failures=$((failures + 1)); fi
}
check_text() {  # name, file that must contain the text, text
  if grep -qF -- "$3" "$2"; then passes=$((passes + 1)); else echo "FAIL: $1: no '$3' in:"; cat "$2"; failures=$((failures + 1)); fi
}
finish() {  # name of the suite
  echo "$1: $passes passed, $failures failed"
  [ "$failures" -eq 0 ]
}
