#!/usr/bin/env bash
# The suite on a busy machine: two CPU hogs and two copies of the whole
# ctest suite at once in build/, ROUNDS rounds (5 by default). Every round of
# both copies must pass. Build first (scripts/build.sh).
#   scripts/suite-under-load.sh [ROUNDS]
set -uo pipefail
cd "$(dirname "$0")/.."
logs=$(mktemp -d)
yes >/dev/null & hog1=$!
yes >/dev/null & hog2=$!
trap 'kill $hog1 $hog2 2>/dev/null' EXIT
failed=0
for round in $(seq "${1:-5}"); do
  ctest --test-dir build --parallel 2 >"$logs/a$round.log" 2>&1 & first=$!
  ctest --test-dir build --parallel 2 >"$logs/b$round.log" 2>&1 & second=$!
  wait $first || failed=1
  wait $second || failed=1
  echo "round $round: $(grep -h 'tests passed' "$logs/a$round.log" "$logs/b$round.log" | paste -sd'|')"
done
[ "$failed" -eq 0 ] && rm -rf "$logs" || echo "logs kept in $logs"
exit $failed
