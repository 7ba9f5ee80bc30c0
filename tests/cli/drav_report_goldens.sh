#!/usr/bin/env bash
# Every writer's whole output, through the command as a user runs it, for
# one small file of awkward names (markup of every kind, a quote, a comma,
# a line break, a backslash, Greek and accented letters): the table, and the
# averages of two sets. A golden changes only when a writer is meant to; set
# DRAV_UPDATE_GOLDENS=1 to write them anew, then read the diff line by line.
set -u
bin=$1
src=$2
source "$(dirname "$0")/checks.sh"
golden=$src/tests/golden/selection
input=$golden/awkward.csv
for format in text:txt csv:csv tsv:tsv markdown:md latex:tex json:json; do
  name=${format%%:*} ext=${format##*:}
  for run in "table" "average --by site --estimate b --se b_se"; do
    command=${run%% *}
    # shellcheck disable=SC2086
    "$bin" $run --format "$name" "$input" >"$tmp/out" 2>"$tmp/err"
    check "$command $name: status" 0 $?
    check "$command $name: nothing on stderr" "" "$(cat "$tmp/err")"
    if [ "${DRAV_UPDATE_GOLDENS:-}" = 1 ]; then cp "$tmp/out" "$golden/$command.$ext"; fi
    check "$command $name: as the golden" "" "$(diff "$golden/$command.$ext" "$tmp/out")"
  done
done
# The LaTeX tables compile with the preamble of the manual, where a TeX
# system is installed.
if command -v pdflatex >/dev/null; then
  for command in table average; do
    { printf '\\documentclass{article}\n\\usepackage[T1]{fontenc}\n\\usepackage{lmodern}\n'
      printf '\\usepackage{booktabs}\n\\begin{document}\n'
      cat "$golden/$command.tex"
      printf '\\end{document}\n'; } >"$tmp/$command.tex"
    (cd "$tmp" && pdflatex -interaction=nonstopmode -halt-on-error "$command.tex" >"$tmp/latex.log" 2>&1)
    check "$command latex: compiles" 0 $?
  done
else
  echo "note: pdflatex is not installed; the LaTeX tables were not compiled"
fi

finish drav_report_goldens
