#!/usr/bin/env bash
# drav-report table --fits on FILES printed outputs of about 50 KB each (R,
# lavaan, Mplus, statsmodels, MARK, Stata, SAS and SPSS in turn, each a
# sample padded with printed numbers that no reader takes for a model), as
# a whole process:
# wall time, best of RUNS runs with the files in the page cache, and peak
# memory; beside it what a researcher would script in R, readLines and
# regmatches over the same files. Goal: 10,000 files under 1 s.
#   bench/fits_read.sh [BUILD_DIR] [FILES]    (RUNS=5 by default)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
files=${2:-10000}
runs=${RUNS:-5}
bin=$(pwd)/$build/tools/drav-report
samples=$(pwd)/tests/golden/fits/samples
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

# Padding: rows of printed numbers, as residuals or a parameter listing
# print them, to 50 KB a file.
awk 'BEGIN { srand(3); for (i = 1; i <= 640; i++) { printf "  [%4d]", i; for (j = 0; j < 8; j++) printf " %8.4f", rand() * 10 - 5; printf "\n" } }' >"$tmp/padding"
kinds=(r/knitted.md lavaan/two-models.txt mplus/cfa-ml.out statsmodels/ols.txt mark/mark-cjs.out
  stata/stata-logit.log sas/sas-listing.lst spss/spss-genlin.txt)
exts=(md txt out txt out log lst txt)
mkdir "$tmp/outputs"
# knitr prefixes what R printed with "## ", the padding too.
sed 's/^/## /' "$tmp/padding" | cat "$samples/${kinds[0]}" - >"$tmp/kind0"
for k in 1 2 3 4 5 7; do cat "$samples/${kinds[$k]}" "$tmp/padding" >"$tmp/kind$k"; done
# The listing's first two pages, its LOGISTIC and GENMOD ML fits: its REML
# fit would have every ranking refused.
awk '/^\f/ {page++} page <= 2' "$samples/${kinds[6]}" | cat - "$tmp/padding" >"$tmp/kind6"
for ((i = 0; i < files; i++)); do
  k=$((i % ${#kinds[@]}))
  cp "$tmp/kind$k" "$tmp/outputs/$(printf 'run%05d' "$i").${exts[$k]}"
done
echo "input: $files files, $(du -sh "$tmp/outputs" | cut -f1) ($(cat "$tmp"/kind* | wc -c | awk -v k=${#kinds[@]} '{printf "%d", $1 / k}') bytes each on average)"

cd "$tmp/outputs"
models=$("$bin" table --fits --criterion aic --format csv ./* 2>/dev/null | tail -n +2 | wc -l)
echo "drav-report ranks $models models"
best=
for ((r = 0; r < runs; r++)); do
  start=$(date +%s%N)
  "$bin" table --fits --criterion aic --format csv ./* >/dev/null 2>&1
  ms=$((($(date +%s%N) - start) / 1000000))
  if [ -z "$best" ] || [ "$ms" -lt "$best" ]; then best=$ms; fi
done
/usr/bin/time -f %M -o "$tmp/peak" "$bin" table --fits --criterion aic --format csv ./* >/dev/null 2>&1 || true
peak=$(tail -n 1 "$tmp/peak")
echo "drav-report table --fits: ${best} ms (best of $runs), peak ${peak} KB"

if command -v Rscript >/dev/null; then
  cat >"$tmp/fits.R" <<'R'
# What one would script: each file's lines, the numbers found by regexes
# for the program that printed it, AIC computed and ranked.
num <- function(lines, pattern) {
  hit <- regmatches(lines, regexpr(pattern, lines, perl = TRUE))
  if (length(hit) == 0) return(NA)
  as.numeric(sub(".*?(-?[0-9.]+)\\s*$", "\\1", hit[1], perl = TRUE))
}
rows <- lapply(list.files(".", full.names = TRUE), function(f) {
  l <- readLines(f, warn = FALSE)
  if (any(grepl("^Mplus VERSION", l))) {
    data.frame(f, ll = num(l, "H0 Value\\s+-?[0-9.]+"), k = num(l, "Number of Free Parameters\\s+[0-9]+"))
  } else if (any(grepl("^lavaan ", l))) {
    data.frame(f, ll = num(l, "Loglikelihood user model \\(H0\\)\\s+-?[0-9.]+"),
               k = num(l, "Number of model parameters\\s+[0-9]+"))
  } else if (any(grepl("Regression Results", l))) {
    n <- num(l, "No. Observations:\\s+[0-9]+"); d <- num(l, "Df Residuals:\\s+[0-9]+")
    data.frame(f, ll = num(l, "Log-Likelihood:\\s+-?[0-9.]+"), k = n - d + 1)
  } else if (any(grepl("^ -2logL \\{", l))) {
    data.frame(f, ll = -num(l, "^ -2logL \\{.*\\} = -?[0-9.]+") / 2,
               k = num(l, "^ Number of Estimated Parameters \\{.*\\} = [0-9]+"))
  } else if (any(grepl("ll\\(model\\)", l))) {
    row <- regmatches(l, regexpr("^ *[^ ]+ \\| +[0-9,]+ +-?[0-9.]+ +-?[0-9.]+ +[0-9]+", l))[1]
    w <- strsplit(trimws(row), " +")[[1]]
    data.frame(f, ll = as.numeric(w[5]), k = as.numeric(w[6]))
  } else if (any(grepl("The LOGISTIC Procedure", l))) {
    m2 <- num(l, "-2 Log L +[0-9.]+ +[0-9.]+"); a <- num(l, "^ *AIC +[0-9.]+ +[0-9.]+")
    data.frame(f, ll = -m2 / 2, k = (a - m2) / 2)
  } else if (any(grepl("Goodness of Fit", l))) {
    ll <- as.numeric(sub(",", ".", sub(".*?(-?[0-9.,]+)\\s*$", "\\1", grep("^Log Likelihood", l, value = TRUE)[1], perl = TRUE)))
    a <- as.numeric(sub(",", ".", sub(".*?([0-9.,]+)\\s*$", "\\1", grep("^Akaike", l, value = TRUE)[1], perl = TRUE)))
    data.frame(f, ll = ll, k = (a + 2 * ll) / 2)
  } else {
    a <- num(l, "AIC: [0-9.]+"); r <- num(l, "Residual deviance: .* on [0-9]+")
    data.frame(f, ll = NA_real_, k = NA_real_, aic = a)[, 1:3]
  }
})
d <- do.call(rbind, rows)
d$aic <- -2 * d$ll + 2 * d$k
d <- d[order(d$aic), ]
d$delta <- d$aic - min(d$aic, na.rm = TRUE)
d$weight <- exp(-d$delta / 2) / sum(exp(-d$delta / 2), na.rm = TRUE)
write.csv(d, stdout(), row.names = FALSE)
R
  start=$(date +%s%N)
  Rscript --vanilla "$tmp/fits.R" >/dev/null 2>&1
  r_ms=$((($(date +%s%N) - start) / 1000000))
  echo "R, readLines and regmatches: ${r_ms} ms (one run)"
  echo "drav-report is $(awk -v a="$r_ms" -v b="$best" 'BEGIN {printf "%.0f", a / (b > 0 ? b : 1)}') times faster"
fi
