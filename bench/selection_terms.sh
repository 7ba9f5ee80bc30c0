#!/usr/bin/env bash
# drav-report importance and average --all on a million models of ten terms
# each, from twelve: the terms long (--coefficients, ten million rows) and
# wide (twelve term columns), as whole processes: wall time and peak memory
# from /usr/bin/time -v, and the same computation in plain R on the same
# files, with the ratio. Both must agree to 1e-9 before the times mean
# anything. Goal: each Drav run under 5 s and 1 GB.
#   bench/selection_terms.sh [BUILD_DIR] [MODELS]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
models=${2:-1000000}
bin=$build/tools/drav-report
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

# Each model drops two of the twelve terms at random; names of 12
# characters, n = 500, K = 12 - 2 + 1.
awk -v m="$models" -v table="$tmp/models.csv" -v long="$tmp/long.csv" -v wide="$tmp/wide.csv" 'BEGIN {
  srand(11)
  print "model,loglik,k,n" >table
  print "model,term,estimate,std.error" >long
  header = "model,loglik,k,n"
  for (t = 1; t <= 12; t++) header = header ",x" t ",x" t "_se"
  print header >wide
  for (i = 1; i <= m; i++) {
    name = sprintf("model%07d", i)
    a = 1 + int(rand() * 12); b = 1 + int(rand() * 11); if (b >= a) b++
    ll = sprintf("%.6f", -1000 - rand() * 30)
    print name "," ll ",11,500" >table
    row = name "," ll ",11,500"
    for (t = 1; t <= 12; t++) {
      if (t == a || t == b) { row = row ",NA,NA"; continue }
      e = sprintf("%.6f", t / 10 + rand() - 0.5); s = sprintf("%.6f", 0.05 + rand() / 10)
      print name ",x" t "," e "," s >long
      row = row "," e "," s
    }
    print row >wide
  }
}'
echo "input: $models models; long $(du -h "$tmp/long.csv" | cut -f1) ($(($(wc -l <"$tmp/long.csv") - 1)) rows), wide $(du -h "$tmp/wide.csv" | cut -f1)"

measure() {  # label, output file, command...
  local label=$1 out=$2
  shift 2
  /usr/bin/time -v "$@" >"$out" 2>"$tmp/time"
  awk -v l="$label" -F': ' '/Elapsed \(wall/ {w = $2} /Maximum resident/ {m = $2}
    END {split(w, p, ":"); s = p[1] * 60 + p[2]; if (length(p) == 3) s = p[1] * 3600 + p[2] * 60 + p[3]
         printf "%-36s %6.2f s  %6.0f MB\n", l, s, m / 1024}' "$tmp/time"
}
measure "drav-report importance, long" "$tmp/imp_long.csv" \
  "$bin" importance --format csv --coefficients "$tmp/long.csv" "$tmp/models.csv"
measure "drav-report average --all, long" "$tmp/avg_long.csv" \
  "$bin" average --all --format csv --coefficients "$tmp/long.csv" "$tmp/models.csv"
measure "drav-report importance, wide" "$tmp/imp_wide.csv" \
  "$bin" importance --format csv "$tmp/wide.csv"
measure "drav-report average --all, wide" "$tmp/avg_wide.csv" \
  "$bin" average --all --format csv "$tmp/wide.csv"

cat >"$tmp/terms.R" <<'R'
args <- commandArgs(trailingOnly = TRUE)
d <- read.csv(args[1], colClasses = c("character", "numeric", "numeric", "numeric"))
l <- read.csv(args[2], colClasses = c("character", "character", "numeric", "numeric"))
aicc <- -2 * d$loglik + 2 * d$k + 2 * d$k * (d$k + 1) / (d$n - d$k - 1)
delta <- aicc - min(aicc)
w <- exp(-delta / 2) / sum(exp(-delta / 2))
i <- match(l$model, d$model)
lw <- w[i]
imp <- tapply(lw, l$term, sum)
models <- tapply(lw, l$term, length)
# Conditional weights from exp(-delta/2) against each term's best model.
ld <- delta[i]
best <- tapply(ld, l$term, min)
cw <- exp(-(ld - best[l$term]) / 2)
cw <- cw / tapply(cw, l$term, sum)[l$term]
est <- tapply(cw * l$estimate, l$term, sum)
se <- sqrt(tapply(cw * (l$std.error^2 + (l$estimate - est[l$term])^2), l$term, sum))
full <- tapply(lw * l$estimate, l$term, sum)
absent <- 1 - imp  # the weight of the models without the term, estimate 0 and SE 0
fullse <- sqrt(tapply(lw * (l$std.error^2 + (l$estimate - full[l$term])^2), l$term, sum) + absent * full^2)
write.csv(data.frame(term = names(imp), importance = as.numeric(imp), models = as.numeric(models),
                     estimate = as.numeric(est), se = as.numeric(se), full_estimate = as.numeric(full),
                     full_se = as.numeric(fullse)), args[3], row.names = FALSE)
R
measure "R (read.csv, tapply), long" /dev/null Rscript --vanilla "$tmp/terms.R" "$tmp/models.csv" "$tmp/long.csv" "$tmp/r.csv"

cat >"$tmp/compare.R" <<'R'
args <- commandArgs(trailingOnly = TRUE)
r <- read.csv(args[1])
bad <- 0
for (f in args[-1]) {
  d <- read.csv(f)
  d <- d[match(r$term, d$term), ]
  for (col in intersect(names(r)[-1], names(d))) {
    ok <- all(abs(d[[col]] - r[[col]]) <= 1e-9 * abs(r[[col]]))
    if (!ok) { cat("disagree:", f, col, "\n"); bad <- bad + 1 }
  }
}
quit(status = if (bad == 0) 0 else 1)
R
Rscript --vanilla "$tmp/compare.R" "$tmp/r.csv" "$tmp/imp_long.csv" "$tmp/avg_long.csv" "$tmp/imp_wide.csv" "$tmp/avg_wide.csv"
echo "drav-report and R agree to 1e-9 on importance, models and every average, both forms"
