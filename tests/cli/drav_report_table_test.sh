#!/usr/bin/env bash
# drav-report table and average as a script sees them: exit statuses, where
# messages go, standard input and pipes, outputs that cannot be written and
# inputs that never end.
set -u
bin=$1
src=$2
source "$(dirname "$0")/checks.sh"
example=$src/examples/mtcars-lm.csv
run() {  # expected status, name, arguments...; output in $tmp/out and $tmp/err
  local expected=$1 name=$2
  shift 2
  "$bin" "$@" >"$tmp/out" 2>"$tmp/err"
  check "$name: status" "$expected" "$?"
  if [ "$expected" -ne 0 ]; then check "$name: says why on stderr" 1 "$([ -s "$tmp/err" ] && echo 1 || echo 0)"; fi
}

run 0 "table" table "$example"
check_text "table ranks by AICc" "$tmp/out" "Ranked by AICc"
check "table: nothing on stderr" 0 "$(wc -c <"$tmp/err")"
# Best model first: wt * hp has the highest log-likelihood and K = 5.
check "best model" "1,mpg ~ wt * hp,5" "$("$bin" table --format csv "$example" | sed -n 2p | cut -d, -f1-3)"

# Standard input and a pipe give what the file gives.
"$bin" table --format csv "$example" >"$tmp/from-file"
"$bin" table --format csv - <"$example" >"$tmp/from-stdin"
check "standard input" "" "$(cmp "$tmp/from-file" "$tmp/from-stdin" 2>&1)"
"$bin" table --format csv <(cat "$example") >"$tmp/from-pipe"
check "pipe" "" "$(cmp "$tmp/from-file" "$tmp/from-pipe" 2>&1)"

run 1 "missing file" table "$tmp/no-such.csv"
check_text "missing file message" "$tmp/err" "no-such.csv: No such file or directory"
run 1 "folder" table "$tmp"
check_text "folder message" "$tmp/err" "Is a directory"

run 2 "no file" table
run 2 "unknown option" table --sort "$example"
run 2 "bad format" table --format html "$example"
check_text "bad format message" "$tmp/err" "--format is text, csv, tsv, markdown, latex, json or svg"
run 2 "two files" table "$example" "$example"
run 2 "average without columns" average "$example"
run 2 "level of one" table --level 1 "$example"
run 2 "QAIC without c" table --criterion qaic "$example"

printf 'model,loglik,df,n\na,-10,2,30\nb,NA,2,30\n' >"$tmp/na.csv"
run 4 "NA log-likelihood" table "$tmp/na.csv"
check_text "NA names file, line and column" "$tmp/err" "na.csv:3: column 'loglik' holds 'NA', not a number"
printf 'model,loglik,k,n\na,-10,3,4\n' >"$tmp/small.csv"
run 4 "AICc with n = K + 1" table "$tmp/small.csv"

printf 'model,loglik,k,n\na,-10,2,30\na,-11,2,31\n' >"$tmp/warn.csv"
run 0 "warnings keep status 0" table "$tmp/warn.csv"
check_text "different n" "$tmp/err" "warning: $tmp/warn.csv: the models were fitted to different numbers of observations"
check_text "repeated name" "$tmp/err" "the model name 'a' is given twice"
run 4 "strict" table --strict "$tmp/warn.csv"

# An endless input ends at once with a message, not with memory exhausted.
timeout 20 "$bin" table /dev/zero >"$tmp/out" 2>"$tmp/err"
check "endless input" 4 "$?"
check_text "endless input message" "$tmp/err" "NUL byte"

if [ -w /dev/full ]; then
  "$bin" table "$example" >/dev/full 2>"$tmp/err"
  check "full disk" 5 "$?"
  check_text "full disk message" "$tmp/err" "drav-report: cannot write the output: No space left on device"
fi

# Sets: each ranked on its own, the column first.
printf 'site,model,AIC\nN,a,10\nS,b,5\nN,c,8\nS,d,9\n' >"$tmp/sets.csv"
"$bin" table --by site --format csv "$tmp/sets.csv" | cut -d, -f1-3 >"$tmp/out"
check "by sets" "site,rank,model|N,1,c|N,2,a|S,1,b|S,2,d" "$(paste -sd'|' "$tmp/out")"
# JSON is one object with or without sets.
"$bin" table --by site --format json "$tmp/sets.csv" >"$tmp/out"
check "json sets" '{"by": "site", "sets": [' "$(head -c 24 "$tmp/out")"
check_text "json set" "$tmp/out" '{"site": "S", "criterion": "aic", "level": 0.95, "models": ['
python3 -c 'import json,sys; d=json.load(open(sys.argv[1])); assert [s["site"] for s in d["sets"]] == ["N", "S"]' "$tmp/out"
check "json parses" 0 "$?"
printf 'site,model,AIC,b,b_se\nN,a,10,1,0.5\nS,b,5,NA,NA\n' >"$tmp/sets-b.csv"
run 0 "a set without the estimate" average --by site --estimate b --se b_se --format json "$tmp/sets-b.csv"
python3 -c 'import json,sys; d=json.load(open(sys.argv[1])); s=d["sets"]; assert d["by"] == "site"
assert (s[0]["estimate"], s[1]["estimate"], s[1]["models"]) == (1, None, 0)' "$tmp/out"
check "averages every set that has it" 0 "$?"
check_text "names the set without it" "$tmp/err" "no model of set 'S' has an estimate in column 'b'"
printf 'model,AIC,b,b_se\na,10,NA,NA\n' >"$tmp/na-b.csv"
run 4 "no model has the estimate" average --estimate b --se b_se "$tmp/na-b.csv"

# Files as other programs write them: Excel's CSV on Windows (Windows-1252,
# CR LF, a trailing separator), Excel's "Unicode text" (UTF-16, tabs), and
# write.table(sep = ";") with full stops.
printf 'model,AIC,BIC,\r\nTemp\xe9rature,104,100,\r\nPluie,100,104,\r\n' >"$tmp/excel.csv"
run 0 "Windows-1252" table --format csv "$tmp/excel.csv"
check "Windows-1252 names, ranked by AIC" "1,Pluie|2,Température" "$(cut -d, -f1,2 "$tmp/out" | sed -n 2,3p | paste -sd'|')"
check_text "Windows-1252 note" "$tmp/err" "note: $tmp/excel.csv is not UTF-8; read as Windows-1252"
printf 'model\tAIC\r\nTempérature\t104\r\nPluie\t100\r\n' | iconv -f UTF-8 -t UTF-16 >"$tmp/unicode.txt"
run 0 "UTF-16" table --format csv "$tmp/unicode.txt"
check "UTF-16 names" "2,Température" "$(cut -d, -f1,2 "$tmp/out" | sed -n 3p)"
printf '"model";"AIC"\n"a";209.169309219441\n"b";207.5\n' >"$tmp/semicolons.csv"
run 0 "semicolons with full stops" table --format csv "$tmp/semicolons.csv"
check "full stops read" "2,a,,,209.169309219441" "$(sed -n 3p "$tmp/out" | cut -d, -f1-5)"
run 2 "bad --decimal" table --decimal ";" "$tmp/semicolons.csv"
run 2 "bad --encoding" table --encoding latin9 "$tmp/semicolons.csv"
run 2 "--chat while ranking by AICc" table --chat 2 "$example"
check_text "--chat says what to add" "$tmp/err" "add --criterion qaic"
printf 'formula,AIC\ny ~ x,10\n' >"$tmp/formula.csv"
run 0 "formula names models" table --format csv "$tmp/formula.csv"
check "formula" "1,y ~ x" "$(sed -n 2p "$tmp/out" | cut -d, -f1,2)"
printf 'id,AIC\n7,10\n8,12\n' >"$tmp/numbered.csv"
run 0 "numbered models" table --format csv "$tmp/numbered.csv"
check_text "numbering said" "$tmp/err" "note: no column names the models"

# A reader that goes away ends the program quietly, as it does any filter.
awk 'BEGIN { print "model,AIC"; for (i = 1; i <= 50000; i++) print "m" i "," i }' >"$tmp/long.csv"
"$bin" table "$tmp/long.csv" 2>"$tmp/err" | head -n 1 >/dev/null
check "closed pipe: SIGPIPE" "141" "${PIPESTATUS[0]}"
check "closed pipe: no message" 0 "$(wc -c <"$tmp/err")"

# The LaTeX table with names in Greek and French compiles with the preamble
# of the manual, where a TeX system is installed.
if command -v pdflatex >/dev/null; then
  printf 'model,AIC\n\xce\xb2 ~ temp\xc3\xa9rature,10\nwt*hp %% 50_x & $y^2 <z>,12\n' >"$tmp/names.csv"
  { printf '\\documentclass{article}\n\\usepackage[T1]{fontenc}\n\\usepackage{lmodern}\n\\usepackage{booktabs}\n'
    printf '\\begin{document}\n'
    "$bin" table --format latex "$tmp/names.csv"
    printf '\\end{document}\n'; } >"$tmp/table.tex"
  (cd "$tmp" && pdflatex -interaction=nonstopmode -halt-on-error table.tex >"$tmp/latex.log" 2>&1)
  check "LaTeX compiles" 0 "$?"
else
  echo "note: pdflatex is not installed; the LaTeX table was not compiled"
fi

# Average: the parameter's models only (mpg ~ hp has no wt).
run 0 "average" average --estimate wt --se wt_se --format csv "$example"
check "averaged over five models" 5 "$(sed -n 2p "$tmp/out" | cut -d, -f6)"

"$bin" --help >"$tmp/out"
check_text "help names the subcommands" "$tmp/out" "drav-report table [OPTIONS] FILE|-"
run 0 "table help" table --help

finish drav_report_table_cli
