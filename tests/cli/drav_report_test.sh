#!/usr/bin/env bash
# drav-report as a script sees it: exit statuses, where messages go, and the
# report on standard output with "\n" line ends.
set -u
bin=$1
src=$2
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
failures=0
passes=0

check() {  # name, expected status, actual status
  if [ "$2" = "$3" ]; then passes=$((passes + 1)); else echo "FAIL: $1 (expected $2, got $3)"; failures=$((failures + 1)); fi
}
check_text() {  # name, file that must contain the text, text
  if grep -qF -- "$3" "$2"; then passes=$((passes + 1)); else echo "FAIL: $1: no '$3' in:"; cat "$2"; failures=$((failures + 1)); fi
}

"$bin" 5 "$src/examples/five-models.txt" >"$tmp/out" 2>"$tmp/err"
check "report written" 0 $?
# Everything but the date line matches the golden report.
check "report body" "$(tail -n +2 "$src/tests/golden/five-models.report")" "$(tail -n +2 "$tmp/out")"
check "no carriage returns" 0 "$(tr -cd '\r' <"$tmp/out" | wc -c)"
check "nothing on stderr" 0 "$(wc -c <"$tmp/err")"

"$bin" "" "$src/examples/five-models.txt" >"$tmp/out" 2>"$tmp/err"
check "empty count" 2 $?
check_text "empty count message" "$tmp/err" "Please enter the number of models in the set (2-99)."
check "empty count prints no report" 0 "$(wc -c <"$tmp/out")"

for count in 0 1 100 abc; do
  "$bin" "$count" "$src/examples/five-models.txt" >"$tmp/out" 2>"$tmp/err"
  check "count $count" 2 $?
  check_text "count $count message" "$tmp/err" "Please enter a valid number of models in the set (2-99)."
done

"$bin" 5 "$tmp/no-such-file.txt" >"$tmp/out" 2>"$tmp/err"
check "missing file" 1 $?
check_text "missing file message" "$tmp/err" "no-such-file.txt"

"$bin" 5 "$tmp" >"$tmp/out" 2>"$tmp/err"
check "folder" 1 $?
check_text "folder message names the reason" "$tmp/err" "Is a directory"

printf 'A\t1e12\nB\t99999999999\n' >"$tmp/high.txt"
"$bin" 2 "$tmp/high.txt" >"$tmp/out" 2>"$tmp/err"
check "no lowest AIC" 3 $?
check_text "no lowest AIC message" "$tmp/err" "Sorry, can't find low AIC value. Check the data."

"$bin" >"$tmp/out" 2>"$tmp/err"
check "no arguments" 2 $?
"$bin" 5 >"$tmp/out" 2>"$tmp/err"
check "missing file argument" 2 $?
"$bin" 5 a b >"$tmp/out" 2>"$tmp/err"
check "too many arguments" 2 $?

"$bin" --version >"$tmp/out"
check "version status" 0 $?
check_text "version" "$tmp/out" "2.1"
"$bin" --help >"$tmp/out"
check "help status" 0 $?
check_text "help shows an example" "$tmp/out" "A1	204"

echo "drav_report_cli: $passes passed, $failures failed"
[ "$failures" -eq 0 ]
