#!/usr/bin/env bash
# drav-report as a script sees it: exit statuses, where messages go, and the
# report on standard output with "\n" line ends.
set -u
bin=$1
src=$2
source "$(dirname "$0")/checks.sh"

"$bin" 5 "$src/examples/five-models.txt" >"$tmp/out" 2>"$tmp/err"
check "report written" 0 $?
# Everything but the date line matches the golden report.
check "report body" "$(tail -n +2 "$src/tests/golden/five-models.report")" "$(tail -n +2 "$tmp/out")"
check "no carriage returns" 0 "$(tr -cd '\r' <"$tmp/out" | wc -c)"
check "nothing on stderr" 0 "$(wc -c <"$tmp/err")"

# A table with a header through the classic form: the report stays as it
# is, and a hint says why the header stands as the best model.
printf '"","model","AIC"\n"1","a",10\n"2","b",12\n' >"$tmp/table.csv"
"$bin" 3 "$tmp/table.csv" >"$tmp/out" 2>"$tmp/err"
check "table through the classic form" 0 $?
check "its report is the classic one" "$("$bin" 3 - <"$tmp/table.csv" 2>/dev/null | tail -n +3)" "$(tail -n +3 "$tmp/out")"
check_text "hint names the line" "$tmp/err" "hint: line 1 holds no AIC value, so it stands as a model with AIC 0.0"

# Which counts are refused is the core's to test; here only how each refusal is told.
"$bin" "" "$src/examples/five-models.txt" >"$tmp/out" 2>"$tmp/err"
check "empty count" 2 $?
check_text "empty count message" "$tmp/err" "Please enter the number of models in the set (2-99)."
check "empty count prints no report" 0 "$(wc -c <"$tmp/out")"
"$bin" 100 "$src/examples/five-models.txt" >"$tmp/out" 2>"$tmp/err"
check "count 100" 2 $?
check_text "count 100 message" "$tmp/err" "Please enter a valid number of models in the set (2-99)."

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

# Files as they come in a shell: standard input, a pipe, a link loop.
sort "$src/examples/five-models.txt" | "$bin" 5 - >"$tmp/out" 2>"$tmp/err"
check "standard input" 0 $?
check_text "standard input is read" "$tmp/out" "C1                +214.0"
"$bin" 5 <(cat "$src/examples/five-models.txt") >"$tmp/out" 2>"$tmp/err"
check "process substitution" 0 $?
check_text "a pipe is read" "$tmp/out" "C1                +214.0"
ln -s "$tmp/loop-b" "$tmp/loop-a" && ln -s "$tmp/loop-a" "$tmp/loop-b"
"$bin" 5 "$tmp/loop-a" >"$tmp/out" 2>"$tmp/err"
check "link loop" 1 $?
check_text "link loop names the real cause" "$tmp/err" "Too many levels of symbolic links"

# Inputs without end, numbers without range, output with no room.
"$bin" 2 /dev/zero >"$tmp/out" 2>"$tmp/err"
check "endless input" 1 $?
check_text "endless input is told" "$tmp/err" "Reading stopped after 1 GiB"
printf 'A1\t-1e999\nA2\t5\n' | "$bin" 2 - >"$tmp/out" 2>"$tmp/err"
check "overflow" 0 $?
check_text "overflowed best model reads 0.0, 1.0, 1.0" "$tmp/out" "A1                0.0                   1.0                 1.0"
"$bin" 5 "$src/examples/five-models.txt" >/dev/full 2>"$tmp/err"
check "full disk" 5 $?
check_text "full disk is told" "$tmp/err" "cannot write the report: No space left on device"

# Usage errors come before count errors.
"$bin" --help x >"$tmp/out" 2>"$tmp/err"
check "help with an operand" 0 $?
check_text "help with an operand shows help" "$tmp/out" "Usage: drav-report COUNT FILE"
"$bin" 0 x --bogus >"$tmp/out" 2>"$tmp/err"
check "unknown option" 2 $?
check_text "unknown option is named" "$tmp/err" "unknown option --bogus"
"$bin" 0 >"$tmp/out" 2>"$tmp/err"
check_text "missing operand before the count" "$tmp/err" "COUNT and FILE are needed"

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

finish drav_report_cli
