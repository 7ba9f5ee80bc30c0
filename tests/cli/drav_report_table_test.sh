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
}

awkward=$src/tests/golden/selection/awkward.csv
printf 'model,loglik,df,n\na,-10,2,30\nb,NA,2,30\n' >"$tmp/na.csv"
printf 'model,loglik,k,n\na,-10,3,4\n' >"$tmp/small.csv"
printf 'model,AIC,b,b_se\na,10,NA,NA\n' >"$tmp/na-b.csv"
printf '"model";"AIC"\n"a";209.169309219441\n"b";207.5\n' >"$tmp/semicolons.csv"
printf 'model,AIC\nTemp\xc3\xa9rature,104\n' >"$tmp/utf8.csv"
printf 'model,AIC\nTemp\xe9rature,104\n' >"$tmp/cp1252.csv"
printf 'id,AIC\n7,10\n8,12\n' >"$tmp/numbered.csv"
printf 'model,AIC\nmod\xc3\xa8le-\xe5\xae\xbd\xe5\xae\xbd,10\nb,11\nc,200\n' >"$tmp/wide.csv"
printf 'model,AIC,wt,wt_se\na,10,1.0,0.1\nb,11,2.0,NA\n' >"$tmp/na-se.csv"

# Every option with a valid value, and what each refusal says.
# name | expected status | text that stdout and stderr (or, for a failure,
# stderr) hold | arguments
run_cases "$bin" <<CASES
table|0|Ranked by AICc; * marks the 95% confidence set|table "$example"
best model first|0|1,mpg ~ wt * hp,5,|table --format csv "$example"
criterion aic|0|Ranked by AIC;|table --criterion aic "$example"
criterion bic|0|"criterion": "bic"|table --criterion bic --format json "$example"
criterion qaic|0|Ranked by QAIC;|table --criterion qaic --chat 2 "$example"
chat below one|0|note: --chat 0.5 is below 1 and is taken as 1|table --criterion qaic --chat 0.5 "$example"
level|0|1.6487212707001282,false|table --level 0.5 --format csv "$awkward"
sets|0|north,1,"wt*hp|table --by site --format csv "$awkward"
model column|0|1,7,,,10,|table --model id --format csv "$tmp/numbered.csv"
numbered|0|note: no column names the models|table "$tmp/numbered.csv"
decimal|4|not a number; the file's decimal mark is ',' (--decimal)|table --decimal , "$tmp/semicolons.csv"
encoding|0|TempÃ©rature|table --encoding windows-1252 --format csv "$tmp/utf8.csv"
encoding detected|0|note: $tmp/cp1252.csv is not UTF-8; read as Windows-1252|table "$tmp/cp1252.csv"
encoding utf-8|4|cp1252.csv:2: byte E9 is not UTF-8|table --encoding utf-8 "$tmp/cp1252.csv"
tsv|0|rank	model	k|table --format tsv "$example"
digits|0|-67.805  147.919   0.000       1.000   0.974|table --digits 3 "$example"
average|0|aicc,-8.113253996800491,1.4127372160313065,-10.882168059841232,-5.34433993375975,5|average --estimate wt --se wt_se --format csv "$example"
help|0|--decimal .|table --help
missing file|1|no-such.csv: No such file or directory|table "$tmp/no-such.csv"
folder|1|Is a directory|table "$tmp"
no file|2|no FILE given|table
unknown option|2|unknown option --sort for table|table --sort "$example"
bad format|2|--format is text, csv, tsv, markdown, latex, json or svg, not 'html'|table --format html "$example"
two files|2|one FILE only|table "$example" "$example"
average without columns|2|average needs --estimate COLUMN and --se COLUMN|average "$example"
level of one|2|--level is a fraction between 0 and 1|table --level 1 "$example"
qaic without chat|2|QAIC computed from the log-likelihood needs --chat|table --criterion qaic "$example"
chat with aicc|2|the table is ranked by AICc; add --criterion qaic or qaicc|table --chat 2 "$example"
bad decimal|2|--decimal is . or , not ';'|table --decimal ";" "$tmp/semicolons.csv"
bad encoding|2|--encoding is utf-8 or windows-1252, not 'latin9'|table --encoding latin9 "$tmp/semicolons.csv"
double-width names aligned|0|   2  b                        11.00|table "$tmp/wide.csv"
evidence ratio capped for people|0|1.0000          >99999|table "$tmp/wide.csv"
evidence ratio whole in csv|0|,1.8112390828890233e+41,false|table --format csv "$tmp/wide.csv"
json of one parameter names its subset|0|"models": 1, "top": 1}|average --estimate wt --se wt_se --format json --top 1 "$tmp/na-se.csv"
an NA SE left empty|0|aic          1.3775  |average --estimate wt --se wt_se "$tmp/na-se.csv"
na log-likelihood|4|na.csv:3: column 'loglik' holds 'NA', not a number|table "$tmp/na.csv"
aicc with n = k + 1|4|small.csv:2: AICc needs n > K + 1, and here n = 4 with K = 3|table "$tmp/small.csv"
no model has the estimate|4|na-b.csv: no model has an estimate in column 'b'|average --estimate b --se b_se "$tmp/na-b.csv"
CASES

# In file order the first row is the file's first model, whatever its rank.
check "file order" "5,mpg ~ wt" "$("$bin" table --no-sort --format csv "$example" | sed -n 2p | cut -d, -f1-2)"

# Standard input and a pipe give what the file gives.
"$bin" table --format csv "$example" >"$tmp/from-file"
"$bin" table --format csv - <"$example" >"$tmp/from-stdin"
check "standard input" "" "$(cmp "$tmp/from-file" "$tmp/from-stdin" 2>&1)"
"$bin" table --format csv <(cat "$example") >"$tmp/from-pipe"
check "pipe" "" "$(cmp "$tmp/from-file" "$tmp/from-pipe" 2>&1)"

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

# A reader that goes away ends the program quietly, as it does any filter.
awk 'BEGIN { print "model,AIC"; for (i = 1; i <= 50000; i++) print "m" i "," i }' >"$tmp/long.csv"
"$bin" table "$tmp/long.csv" 2>"$tmp/err" | head -n 1 >/dev/null
check "closed pipe: SIGPIPE" "141" "${PIPESTATUS[0]}"
check "closed pipe: no message" 0 "$(wc -c <"$tmp/err")"

finish drav_report_table_cli
