#!/usr/bin/env bash
# drav-report average --all --fits on FILES printed summary() outputs of
# gaussian glms, 20 terms each (the intercept and 19 of 30 predictors, a
# different choice a file), as a whole process: wall time, best of RUNS
# runs with the files in the page cache, and peak memory. Goal: 1,000
# outputs read and averaged under 1 s.
#   bench/fits_average.sh [BUILD_DIR] [FILES]    (RUNS=5 by default)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
files=${2:-1000}
runs=${RUNS:-5}
bin=$(pwd)/$build/tools/drav-report
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
mkdir "$tmp/outputs"
# As R prints summary(glm(...)): the call, the table under its headings,
# the dispersion, the deviances and the AIC.
awk -v files="$files" -v dir="$tmp/outputs" 'BEGIN {
  srand(11)
  for (f = 0; f < files; f++) {
    out = sprintf("%s/run%05d.txt", dir, f)
    n = 0; formula = ""
    for (p = 1; p <= 30; p++) held[p] = 0
    while (n < 19) { p = int(rand() * 30) + 1; if (!held[p]) { held[p] = 1; n++ } }
    for (p = 1; p <= 30; p++) if (held[p]) formula = formula (formula == "" ? "" : " + ") "x" p
    printf "\nCall:\nglm(formula = y ~ %s, data = d)\n\nDeviance Residuals: \n    Min       1Q   Median       3Q      Max  \n-2.9125  -0.6733   0.0125   0.6412   2.8841  \n\nCoefficients:\n", formula > out
    printf "            Estimate Std. Error t value Pr(>|t|)    \n" > out
    printf "(Intercept)  %7.4f    %7.4f  %6.3f  %7.4f    \n", rand() * 4 - 2, 0.05 + rand() * 0.1, rand() * 9 - 4.5, rand() > out
    for (p = 1; p <= 30; p++) if (held[p]) printf "%-11s  %7.4f    %7.4f  %6.3f  %7.4f    \n", "x" p, rand() * 2 - 1, 0.05 + rand() * 0.1, rand() * 9 - 4.5, rand() > out
    printf "---\nSignif. codes:  0 *** 0.001 ** 0.01 * 0.05 . 0.1   1\n\n(Dispersion parameter for gaussian family taken to be 1.0214)\n\n" > out
    printf "    Null deviance: 612.44  on 299  degrees of freedom\nResidual deviance: %.2f  on 279  degrees of freedom\nAIC: %.2f\n\nNumber of Fisher Scoring iterations: 2\n\n", 280 + rand() * 5, 870 + rand() * 12 > out
    close(out)
  }
}'
echo "input: $files files, $(du -sh "$tmp/outputs" | cut -f1)"
cd "$tmp/outputs"
terms=$("$bin" average --all --fits --format csv ./* 2>/dev/null | tail -n +2 | wc -l)
echo "drav-report averages $terms terms"
best=
for ((r = 0; r < runs; r++)); do
  start=$(date +%s%N)
  "$bin" average --all --fits --format csv ./* >/dev/null 2>&1
  ms=$((($(date +%s%N) - start) / 1000000))
  if [ -z "$best" ] || [ "$ms" -lt "$best" ]; then best=$ms; fi
done
/usr/bin/time -f %M -o "$tmp/peak" "$bin" average --all --fits --format csv ./* >/dev/null 2>&1 || true
echo "drav-report average --all --fits: ${best} ms (best of $runs), peak $(tail -n 1 "$tmp/peak") KB"
