#!/usr/bin/env bash
# drav-report importance, average --all, the subsets and the charts as a
# script sees them: statuses and messages, the JSON shapes other programs
# rely on, and SVG that parses as XML and renders with rsvg-convert.
set -u
bin=$1
source "$(dirname "$0")/checks.sh"

# A dredge-like wide table: four models, terms a (with SEs, in three
# models) and b (in one), f a factor, delta and weight columns that are never read.
cat >"$tmp/wide.csv" <<'CSV'
model,logLik,df,nobs,AIC,a,a_se,b,f,delta,weight
m1,-10,3,20,26,1.5,0.5,NA,+,9,9
m2,-10.5,3,20,27,2,0.5,,NA,9,9
m3,-12,2,20,28,NA,NA,NA,+,9,9
m4,-11,4,20,30,1,1,2,NA,9,9
CSV
cat >"$tmp/long.csv" <<'CSV'
model,term,estimate,std.error
m1,a,1.5,0.5
m2,a,2,0.5
m4,a,1,1
m4,b,2,0.5
CSV
printf 'model,term,estimate\nm9,a,1\n' >"$tmp/stray.csv"
printf 'model,AIC,x,x_se\na,1,2,-1\n' >"$tmp/bad-se.csv"
printf 'model,AIC,family\na,1,gaussian\n' >"$tmp/no-terms.csv"

# name | expected status | text that stdout (or, for a failure, stderr) holds | arguments
run_cases "$bin" <<CASES
importance json|0|{"criterion": "aic", "terms": [|importance --format json "$tmp/wide.csv"
importance json terms|0|{"term": "a", "importance": |importance --format json "$tmp/wide.csv"
importance long|0|{"term": "b", "importance": |importance --format json --coefficients "$tmp/long.csv" "$tmp/wide.csv"
average all json|0|{"criterion": "aic", "level": 0.9, "terms": [|average --all --level 0.9 --format json "$tmp/wide.csv"
average all json keys|0|"models": 3, "estimate": |average --all --format json "$tmp/wide.csv"
average all json full|0|"full_estimate": |average --all --format json "$tmp/wide.csv"
factor has no average|0|f   |average --all "$tmp/wide.csv"
subset in text|0|Subset: the models with delta <= 1.5 (2 of 4)|importance --delta-max 1.5 "$tmp/wide.csv"
subset in json|0|"delta_max": 1.5, "top": 2, "terms"|average --all --delta-max 1.5 --top 2 --format json "$tmp/wide.csv"
subset of the table|0|"delta_max": 1, "models": [|table --delta-max 1 --format json "$tmp/wide.csv"
qaicc computed|0|"criterion": "qaicc"|table --criterion qaicc --chat 2 --format json "$tmp/wide.csv"
every format|0|\\toprule|average --all --format latex "$tmp/wide.csv"
table reads no terms|0|Ranked by AIC|table "$tmp/bad-se.csv"
terms are read|4|bad-se.csv:2: column 'x_se' holds '-1', not a standard error|importance "$tmp/bad-se.csv"
no terms|4|no term columns beside the models|importance "$tmp/no-terms.csv"
stray coefficient|4|stray.csv:2: column 'model' names model 'm9', which the table does not hold|importance --coefficients "$tmp/stray.csv" "$tmp/wide.csv"
missing coefficients|1|no-such.csv: No such file or directory|importance --coefficients "$tmp/no-such.csv" "$tmp/wide.csv"
all and estimate|2|average takes --all or --estimate and --se, not both|average --all --estimate a --se a_se "$tmp/wide.csv"
average chart|2|average has no chart|average --all --format svg "$tmp/wide.csv"
both from standard input|2|cannot both be standard input|importance --coefficients - -
top zero|2|--top wants a whole number|table --top 0 "$tmp/wide.csv"
negative delta|2|--delta-max wants a number of 0 or more|table --delta-max -1 "$tmp/wide.csv"
qaicc without chat|2|QAICc computed from the log-likelihood needs --chat|table --criterion qaicc "$tmp/wide.csv"
unequal counts strict|4|terms appear in unequal numbers of models ('a' in 3, 'b' in 1 of 4)|importance --strict "$tmp/wide.csv"
CASES

# Unequal counts are a warning, with the table still printed.
"$bin" importance "$tmp/wide.csv" >"$tmp/out" 2>"$tmp/err"
check "unequal counts: status" 0 "$?"
check_text "unequal counts warned" "$tmp/err" "drav-report: warning: $tmp/wide.csv: terms appear in unequal numbers of models"

# Both JSON outputs parse, with the keys of the published shape.
for args in "importance" "average --all"; do
  # shellcheck disable=SC2086
  "$bin" $args --format json "$tmp/wide.csv" 2>/dev/null | python3 -c '
import json, sys
d = json.load(sys.stdin)
keys = {"term", "importance", "models"} | ({"estimate", "se", "lower", "upper", "full_estimate", "full_se"} if "level" in d else set())
assert all(set(t) == keys for t in d["terms"]), d["terms"]
assert [t["term"] for t in d["terms"]] == ["a", "f", "b"], d["terms"]' 2>"$tmp/py"
  check "$args json parses" "" "$(cat "$tmp/py")"
done

# Charts: a table of 45 models (past the 40-bar limit) whose names hold
# every character XML cares about, a --by table, and importance. Each must
# parse as XML and render.
awk 'BEGIN { print "model,AIC,site"; for (i = 1; i <= 45; i++) printf "\"m%d <&> \"\"q\"\" \001\",%d,%s\n", i, 100 + i, i % 2 ? "A" : "B" }' >"$tmp/many.csv"
charts=(
  "table --format svg $tmp/many.csv"
  "table --format svg --by site $tmp/many.csv"
  "importance --format svg $tmp/wide.csv"
  "table --format svg $tmp/wide.csv"
)
for i in "${!charts[@]}"; do
  # shellcheck disable=SC2086
  "$bin" ${charts[$i]} >"$tmp/chart$i.svg" 2>/dev/null
  check "chart $i: status" 0 "$?"
  check "chart $i: well-formed XML" "" "$(xmllint --noout "$tmp/chart$i.svg" 2>&1)"
  if command -v rsvg-convert >/dev/null; then
    rsvg-convert -o "$tmp/chart$i.png" "$tmp/chart$i.svg" 2>"$tmp/rsvg"
    check "chart $i: renders" "0 $(: )" "$? $(cat "$tmp/rsvg")"
  fi
done
check_text "the rest as one bar" "$tmp/chart0.svg" ">6 more models</text>"
check_text "the rest's grey in the legend" "$tmp/chart0.svg" ">the rest, summed</text>"
check "one bar per model up to the limit, three in the legend" 40 "$(grep -c '<rect x=' "$tmp/chart0.svg" | awk '{print $1 - 3}')"
check_text "a panel per set" "$tmp/chart1.svg" ">site = B</text>"
check_text "importance bars name their counts" "$tmp/chart2.svg" ">a (3)</text>"

finish drav_report_terms_cli
