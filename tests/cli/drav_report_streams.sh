#!/usr/bin/env bash
# drav-report where a golden batch cannot look: pipes, links that loop,
# inputs that never end, a full disk, a reader that goes away; and outputs
# that other programs must take: SVG that parses and renders, LaTeX that
# compiles, JSON that parses.
#   drav_report_streams.sh DRAV_REPORT SOURCE_DIR
set -u
bin=$1
src=$2
source "$(dirname "$0")/checks.sh"
five=$src/examples/five-models.txt
lm=$src/examples/mtcars-lm.csv
awkward=$src/tests/golden/awkward.csv

# A pipe gives what the file gives, for both forms (the classic report
# below its date and file name).
report=$("$bin" 5 "$five" | tail -n +3)
check "classic: a pipe" "$report" "$(cat "$five" | "$bin" 5 - | tail -n +3)"
check "classic: process substitution" "$report" "$("$bin" 5 <(cat "$five") | tail -n +3)"
check "table: a pipe" "" "$(diff <("$bin" table "$lm") <(cat "$lm" | "$bin" table -))"
check "table: process substitution" "" "$(diff <("$bin" table "$lm") <("$bin" table <(cat "$lm")))"

# Lines far longer than anything kept of them, across many chunks of the
# stream: the name is cut to 8 characters, the value read in full (-1 from
# 200,000 digits and an exponent), and the next line found.
python3 -c 'n = 200000
print("\u00e9" + "n" * n + "\t-1" + "0" * n + "e-" + str(n) + "\t" + "x" * n)
print("m" * n + ",7.25")
print("c," + "9" * n)' >"$tmp/huge.txt"
check "huge fields" "énnnnnnn -1.0|mmmmmmmm +7.25|c <.0001" \
  "$("$bin" 3 "$tmp/huge.txt" | sed -n 7,9p | awk '{ print $1, $2 }' | paste -sd'|')"

ln -s "$tmp/loop-b" "$tmp/loop-a" && ln -s "$tmp/loop-a" "$tmp/loop-b"
"$bin" 5 "$tmp/loop-a" 2>"$tmp/err"
check "link loop: status" 1 $?
check_text "link loop: the real cause" "$tmp/err" "Too many levels of symbolic links"

# Endless inputs end at once with a message, not with memory exhausted.
timeout 60 "$bin" 2 /dev/zero >/dev/null 2>"$tmp/err"
check "classic, endless input: status" 4 $?
check_text "classic, endless input: told" "$tmp/err" "Reading stopped after 1 GiB"
timeout 20 "$bin" table /dev/zero >/dev/null 2>"$tmp/err"
check "table, endless input: status" 4 $?
check_text "table, endless input: told" "$tmp/err" "NUL byte"
timeout 20 "$bin" fits /dev/zero >/dev/null 2>"$tmp/err"
check "fits, endless input: status" 4 $?
check_text "fits, endless input: told at its first byte" "$tmp/err" "drav-report: /dev/zero:1: holds a NUL byte; this is not a text file"

if [ -w /dev/full ]; then
  "$bin" 5 "$five" >/dev/full 2>"$tmp/err"
  check "classic, full disk: status" 5 $?
  check_text "classic, full disk: told" "$tmp/err" "cannot write the report: No space left on device"
  "$bin" table "$lm" >/dev/full 2>"$tmp/err"
  check "table, full disk: status" 5 $?
  check_text "table, full disk: told" "$tmp/err" "drav-report: cannot write the output: No space left on device"
  # What was said before the write failed is said once.
  printf 'AIC\n1\n2\n' | "$bin" table - >/dev/full 2>"$tmp/err"
  check "table, full disk: each note once" 1 "$(grep -c 'so they are numbered' "$tmp/err")"
fi

# A reader that goes away ends the program quietly, as it does any filter.
awk 'BEGIN { print "model,AIC"; for (i = 1; i <= 50000; i++) print "m" i "," i }' >"$tmp/long.csv"
"$bin" table "$tmp/long.csv" 2>"$tmp/err" | head -n 1 >/dev/null
check "closed pipe: SIGPIPE" "141 0" "${PIPESTATUS[0]} $(wc -c <"$tmp/err")"

# Charts: 45 models (past the 40-bar limit) named with every character XML
# cares about, the same in sets, and importance; each parses and renders.
awk 'BEGIN { print "model,AIC,site,x"; for (i = 1; i <= 45; i++)
  printf "\"m%d <&> \"\"q\"\" \001\",%d,%s,%s\n", i, 100 + i, i % 2 ? "A" : "B", i % 3 ? 1 : "NA" }' >"$tmp/many.csv"
for args in "table" "table --by site" "importance"; do
  # shellcheck disable=SC2086
  "$bin" $args --format svg "$tmp/many.csv" >"$tmp/chart.svg" 2>/dev/null
  check "$args chart: well-formed XML" "" "$(xmllint --noout "$tmp/chart.svg" 2>&1)"
  if command -v rsvg-convert >/dev/null; then
    check "$args chart: renders" "" "$(rsvg-convert -o "$tmp/chart.png" "$tmp/chart.svg" 2>&1)"
  fi
  cp "$tmp/chart.svg" "$tmp/${args// /-}.svg"
done
check "a bar per model up to the limit, the rest as one" "40 1" \
  "$(grep -c '<rect x=' "$tmp/table.svg" | awk '{print $1 - 3}') $(grep -c '>6 more models</text>' "$tmp/table.svg")"
check_text "the rest's grey in the legend" "$tmp/table.svg" ">the rest, summed</text>"
check_text "a panel per set" "$tmp/table---by-site.svg" ">site = B</text>"
check_text "importance bars name their counts" "$tmp/importance.svg" ">x (30)</text>"

# JSON parses, and LaTeX compiles with the preamble of the manual where a
# TeX system is installed.
for args in "table --by site" "average --by site --estimate b --se b_se" "importance" "average --all"; do
  # shellcheck disable=SC2086
  check "$args json parses" "" "$("$bin" $args --format json "$awkward" 2>/dev/null | python3 -m json.tool 2>&1 >/dev/null)"
done
if command -v pdflatex >/dev/null; then
  for args in "table" "average --by site --estimate b --se b_se" "average --all"; do
    { printf '\\documentclass{article}\n\\usepackage[T1]{fontenc}\n\\usepackage{lmodern}\n'
      printf '\\usepackage{booktabs}\n\\begin{document}\n'
      # shellcheck disable=SC2086
      "$bin" $args --format latex "$awkward" 2>/dev/null
      printf '\\end{document}\n'; } >"$tmp/table.tex"
    (cd "$tmp" && pdflatex -interaction=nonstopmode -halt-on-error table.tex >"$tmp/latex.log" 2>&1)
    check "$args latex: compiles" 0 $?
  done
else
  echo "note: pdflatex is not installed; the LaTeX tables were not compiled"
fi

finish drav_report_streams
