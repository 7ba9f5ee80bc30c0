#!/usr/bin/env bash
# Every number drav-report fits reads from the sample outputs, checked
# against R's own AIC() of the same fits made afresh: glm and lme4 in R,
# lavaan (and lavaan with mimic = "Mplus" for the hand-written Mplus
# outputs), statsmodels' models fitted in R to the data statsmodels
# wrote out, and the ML fits that R printed in Stata's, SAS's and SPSS's
# layouts. The AIC drav-report computes, -2 logLik + 2K, must equal R's
# to the digits each program printed. Skipped, and says so, where R or one
# of its packages is missing.
set -u
bin=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
src=$2
source "$(dirname "$0")/checks.sh"
if ! command -v Rscript >/dev/null; then echo "skipped: R is not installed"; exit 77; fi
if ! Rscript -e 'library(lme4); library(lavaan)' >/dev/null 2>&1; then
  echo "skipped: R's lme4 or lavaan is not installed (r-cran-lme4, r-cran-lavaan)"; exit 77
fi
cd "$src/tests/golden/fits/samples" || exit 1

# file, which model of the file (from 1), R's AIC, how far apart the
# printed digits allow the two to be.
Rscript --vanilla - >"$tmp/expected" 2>"$tmp/r.log" <<'R'
suppressMessages({library(lme4); library(lavaan)})
row <- function(file, i, m, tol) cat(sprintf("%s,%d,%.6f,%g\n", file, i, AIC(m), tol))
d <- mtcars; d$mpg[c(3, 7)] <- NA
row("r/glm-transcript.Rout", 1, glm(count ~ spray, family = poisson, data = InsectSprays), 0.011)
row("r/glm-transcript.Rout", 2, glm(mpg ~ wt + hp, data = d), 0.011)
row("r/glm-transcript.Rout", 3, glm(mpg ~ wt, family = Gamma(link = "log"), data = mtcars), 0.011)
row("r/knitted.md", 2, glm(count ~ 1, family = poisson, data = InsectSprays), 0.011)
row("r/inverse-gaussian.log", 1, glm(mpg ~ wt, family = inverse.gaussian, data = mtcars), 0.011)
f1 <- lmer(Reaction ~ Days + (1 | Subject), sleepstudy, REML = FALSE)
f2 <- lmer(Reaction ~ Days + (Days | Subject), sleepstudy, REML = FALSE)
g1 <- glmer(cbind(incidence, size - incidence) ~ period + (1 | herd), data = cbpp, family = binomial)
for (file in c("r/lme4-ml.txt", "r/lme4-newer-heading.txt")) {
  row(file, 1, f1, 0.051); row(file, 2, f2, 0.051)
  row(file, 3, f1, 0.011); row(file, 4, f2, 0.011)
  row(file, 5, g1, 0.051)
}
# REML: AIC() of a REML fit is the REML criterion plus 2K, as drav-report computes it.
row("r/lme4-reml.txt", 1, lmer(Reaction ~ Days + (Days | Subject), sleepstudy), 0.051)
row("r/lme4-reml.txt", 2, lmer(Reaction ~ Days + (1 | Subject) + (0 + Days | Subject), sleepstudy), 0.0011)
row("r/loglik-only.txt", 1, glm(count ~ spray, family = poisson, data = InsectSprays), 0.0011)
hs <- ' visual  =~ x1 + x2 + x3
        textual =~ x4 + x5 + x6
        speed   =~ x7 + x8 + x9 '
eq <- ' visual  =~ x1 + a*x2 + a*x3
        textual =~ x4 + x5 + x6
        speed   =~ x7 + x8 + x9 '
row("lavaan/two-models.txt", 1, cfa(hs, data = HolzingerSwineford1939), 0.0011)
row("lavaan/two-models.txt", 2, cfa(eq, data = HolzingerSwineford1939, estimator = "MLR"), 0.0011)
row("lavaan/release-0.5-layout.md", 1, cfa(hs, data = HolzingerSwineford1939), 0.0011)
row("lavaan/release-0.5-layout.md", 2, cfa(eq, data = HolzingerSwineford1939, estimator = "MLR"), 0.0011)
g <- HolzingerSwineford1939; set.seed(1); g$x5[sample(nrow(g), 20)] <- NA
row("lavaan/groups-missing.txt", 1, cfa(hs, data = g, group = "school", missing = "listwise"), 0.0011)
row("lavaan/one-group-missing.log", 1, cfa(hs, data = g, missing = "listwise"), 0.0011)
row("mplus/cfa-ml.out", 1, cfa(hs, data = HolzingerSwineford1939, mimic = "Mplus"), 0.0011)
row("mplus/groups-mlr.out", 1, cfa(hs, data = HolzingerSwineford1939, mimic = "Mplus", estimator = "MLR",
                                   group = "school"), 0.0011)
s <- read.csv("statsmodels/grades.csv")
row("statsmodels/ols.txt", 1, lm(GRADE ~ GPA + TUCE + PSI, s), 0.0011)
row("statsmodels/notebook.ipynb", 1, lm(GRADE ~ GPA + TUCE + PSI, s), 0.0011)
row("statsmodels/logit.txt", 1, glm(GRADE ~ GPA + TUCE + PSI, binomial, s), 0.0011)
# Stata, SAS and SPSS as R printed them in those programs' layouts: the ML
# fits, whose AIC R's AIC() gives (Stata's regress counts the variance too).
row("stata/stata-logit.log", 1, glm(am ~ wt, binomial, mtcars), 0.0011)
row("stata/stata-logit.log", 2, glm(am ~ wt + hp, binomial, mtcars), 0.0011)
row("stata/stata-logit.log", 3, glm(am ~ hp, binomial, mtcars), 0.0011)
row("stata/stata-regress.log", 1, lm(mpg ~ wt, mtcars), 0.0011)
ml <- lmer(Reaction ~ Days + (1 | Subject), sleepstudy, REML = FALSE)
row("sas/sas-listing.lst", 1, glm(am ~ wt + hp, binomial, mtcars), 0.0011)
row("sas/sas-listing.lst", 2, glm(breaks ~ wool + tension, poisson, warpbreaks), 0.0011)
row("sas/sas-listing.lst", 4, ml, 0.051)
row("sas/sas-listing.lst", 5, glm(am ~ wt, binomial, mtcars), 0.0011)
row("sas/sas-listing.lst", 6, glm(breaks ~ tension, poisson, warpbreaks), 0.0011)
row("spss/spss-genlin.txt", 1, glm(breaks ~ wool + tension, poisson, warpbreaks), 0.0011)
row("spss/spss-mixed.txt", 2, ml, 0.0011)
R
check "R fitted the models" 0 $?
while IFS=, read -r file index aic tolerance; do
  got=$("$bin" fits --format tsv "$file" 2>/dev/null |
        awk -F'\t' -v row=$((index + 1)) 'NR == row {printf "%.6f", -2 * $5 + 2 * $6}')
  near=$(awk -v a="$got" -v b="$aic" -v t="$tolerance" 'BEGIN {d = a - b; if (d < 0) d = -d; print (a != "" && d <= t) ? "yes" : "no: " a}')
  check "$file model $index: AIC $aic as R's AIC()" yes "$near"
done <"$tmp/expected"
[ -s "$tmp/expected" ] || cat "$tmp/r.log"
finish drav_report_fits_versus_r
