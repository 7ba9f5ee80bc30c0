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
"$bin" table --by site --format json "$tmp/sets.csv" >"$tmp/out"
check_text "json sets" "$tmp/out" '{"site": "S", "criterion": "aic", "level": 0.95, "models": ['
if command -v python3 >/dev/null; then
  python3 -m json.tool "$tmp/out" >/dev/null 2>&1
  check "json parses" 0 "$?"
fi

# Average: the parameter's models only (mpg ~ hp has no wt).
run 0 "average" average --estimate wt --se wt_se --format csv "$example"
check "averaged over five models" 5 "$(sed -n 2p "$tmp/out" | cut -d, -f6)"

"$bin" --help >"$tmp/out"
check_text "help names the subcommands" "$tmp/out" "drav-report table [OPTIONS] FILE|-"
run 0 "table help" table --help

finish drav_report_table_cli
