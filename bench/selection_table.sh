#!/usr/bin/env bash
# drav-report table on a million models (model, loglik, k, n) to CSV, as a
# whole process: wall time over RUNS runs (hyperfine when installed), peak
# memory from /usr/bin/time -v, and the same table computed by a plain R
# script from the same file, with the ratio. Goal: under 1.5 s and 250 MB.
#   bench/selection_table.sh [BUILD_DIR] [MODELS]    (RUNS=5 by default)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
models=${2:-1000000}
runs=${RUNS:-5}
bin=$build/tools/drav-report
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

# Names of 12 characters, log-likelihoods with six decimals, K from 2 to
# 11, n = 500: what a large simulation study or all-subsets search writes.
awk -v m="$models" 'BEGIN { srand(7); print "model,loglik,k,n"
  for (i = 1; i <= m; i++) printf "model%07d,%.6f,%d,500\n", i, -1000 - rand() * 200, 2 + int(rand() * 10) }' >"$tmp/models.csv"
echo "input: $models models, $(du -h "$tmp/models.csv" | cut -f1)"

cat >"$tmp/table.R" <<'R'
args <- commandArgs(trailingOnly = TRUE)
d <- read.csv(args[1])
aicc <- -2 * d$loglik + 2 * d$k + 2 * d$k * (d$k + 1) / (d$n - d$k - 1)
o <- order(aicc)
d <- d[o, ]; aicc <- aicc[o]
delta <- aicc - aicc[1]
likelihood <- exp(-delta / 2)
weight <- likelihood / sum(likelihood)
cumulative <- cumsum(weight)
inset <- c(TRUE, head(cumulative, -1) < 0.95)
write.csv(data.frame(rank = seq_along(aicc), model = d$model, k = d$k, loglik = d$loglik, aicc = aicc,
                     delta = delta, likelihood = likelihood, weight = weight, cumulative_weight = cumulative,
                     evidence_ratio = exp(delta / 2), confidence_set = inset),
          args[2], row.names = FALSE)
R

"$bin" table --format csv "$tmp/models.csv" >"$tmp/drav.csv"
/usr/bin/time -v "$bin" table --format csv "$tmp/models.csv" 2>"$tmp/time" >/dev/null
echo "drav-report peak memory: $(awk '/Maximum resident/ {printf "%.0f MB", $6 / 1024}' "$tmp/time"), CPU time $(awk -F': ' '/User time/ {u = $2} /System time/ {s = $2} END {printf "%.2f s", u + s}' "$tmp/time")"
if command -v hyperfine >/dev/null; then
  hyperfine --runs "$runs" --style basic --export-json "$tmp/h.json" \
    "$bin table --format csv $tmp/models.csv > /dev/null" | grep -E 'Time|Range'
  drav_s=$(python3 -c "import json;print(json.load(open('$tmp/h.json'))['results'][0]['mean'])" 2>/dev/null ||
           awk -F'"mean":' 'NF > 1 {split($2, a, ","); print a[1]; exit}' "$tmp/h.json")
else
  start=$(date +%s%N)
  for _ in $(seq "$runs"); do "$bin" table --format csv "$tmp/models.csv" >/dev/null; done
  drav_s=$(awk -v t=$(( $(date +%s%N) - start )) -v n="$runs" 'BEGIN {print t / n / 1e9}')
fi
echo "drav-report: $(awk -v s="$drav_s" 'BEGIN {printf "%.2f", s}') s per run (mean of $runs)"

if ! command -v Rscript >/dev/null; then
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends r-base-core >/dev/null
fi
start=$(date +%s%N)
/usr/bin/time -v Rscript --vanilla "$tmp/table.R" "$tmp/models.csv" "$tmp/r.csv" 2>"$tmp/rtime"
r_s=$(awk -v t=$(( $(date +%s%N) - start )) 'BEGIN {print t / 1e9}')
echo "R: $(awk -v s="$r_s" 'BEGIN {printf "%.2f", s}') s, peak memory $(awk '/Maximum resident/ {printf "%.0f MB", $6 / 1024}' "$tmp/rtime")"
# Both must agree before the ratio means anything: the same ranking, and
# weights equal to a relative 1e-9.
paste -d, <(cut -d, -f2,8 "$tmp/drav.csv") <(cut -d, -f2,8 "$tmp/r.csv" | tr -d '"') | tail -n +2 |
  awk -F, '$1 != $3 || ($2 - $4) > 1e-9 * $2 || ($4 - $2) > 1e-9 * $2 { print; bad++ } END { exit bad > 0 }' |
  head -5 >"$tmp/disagree" || true
if [ -s "$tmp/disagree" ]; then
  echo "drav-report and R disagree (drav model,weight,R model,weight):"; cat "$tmp/disagree"; exit 1
fi
echo "same ranking and weights; drav-report is $(awk -v r="$r_s" -v d="$drav_s" 'BEGIN {printf "%.1f", r / d}') times faster than R"
