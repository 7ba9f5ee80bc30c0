#!/usr/bin/env bash
# drav-report against a plain R script that computes the same differences,
# Akaike weights and evidence ratios from the same 99-model file, each as a
# whole process started RUNS times. Prints both times and their ratio
# (goal: drav-report at least 50 times faster). Installs Debian's
# r-base-core if R is missing.
#   bench/versus_r.sh [BUILD_DIR]    (RUNS=20 by default)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
runs=${RUNS:-20}
file=examples/ninety-nine-models.txt
if ! command -v Rscript >/dev/null; then
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends r-base-core >/dev/null
fi

script=$(mktemp --suffix=.R)
trap 'rm -f "$script"' EXIT
cat >"$script" <<'R'
args <- commandArgs(trailingOnly = TRUE)
d <- read.table(args[2], sep = "\t", header = FALSE, nrows = as.integer(args[1]),
                col.names = c("model", "aic"), quote = "", comment.char = "")
delta <- d$aic - min(d$aic)
relative <- exp(-delta / 2)
weight <- relative / sum(relative)
ratio <- weight[which.min(d$aic)] / weight
writeLines(sprintf("%-8s %+.4f %.4f %.4f %.2f", substr(d$model, 1, 8), d$aic, delta, weight, ratio))
R

# Both must agree before either is timed: the same weights to four places.
drav_weights=$("$build/tools/drav-report" 99 "$file" | awk 'NR > 6 && NF == 5 {print $4}' | head -n 99)
r_weights=$(Rscript --vanilla "$script" 99 "$file" | awk '{printf "%s\n", ($4 < 0.0001 ? "<.0001" : $4)}' |
            sed -E 's/0+$//; s/\.$/.0/')
if [ "$drav_weights" != "$r_weights" ]; then
  echo "the two disagree on the weights:"; diff <(echo "$drav_weights") <(echo "$r_weights") | head; exit 1
fi

time_runs() {  # command...; prints milliseconds for all runs
  local start end
  start=$(date +%s%N)
  for _ in $(seq "$runs"); do "$@" >/dev/null; done
  end=$(date +%s%N)
  echo $(( (end - start) / 1000000 ))
}
drav_ms=$(time_runs "$build/tools/drav-report" 99 "$file")
r_ms=$(time_runs Rscript --vanilla "$script" 99 "$file")
echo "drav-report: $(awk -v t="$drav_ms" -v n="$runs" 'BEGIN {printf "%.2f", t / n}') ms per run"
echo "R:           $(awk -v t="$r_ms" -v n="$runs" 'BEGIN {printf "%.2f", t / n}') ms per run"
echo "drav-report is $(awk -v a="$r_ms" -v b="$drav_ms" 'BEGIN {printf "%.0f", a / (b > 0 ? b : 1)}') times faster over $runs runs"
