#!/usr/bin/env bash
# Writes the sample outputs of R, lme4, lavaan and statsmodels that the
# readers' tests read, by running the programs themselves on data they
# ship (InsectSprays, mtcars, sleepstudy, cbpp, HolzingerSwineford1939,
# statsmodels' spector and scotland), and those of MARK, Stata, SAS and
# SPSS, printed from R's fits in each program's layout. Run it again after
# a reader learns a new layout; commit what it wrote. Needs Debian's
# r-base-core, r-cran-lme4, r-cran-lavaan, r-cran-knitr, r-cran-mass,
# r-cran-sandwich, r-cran-ggplot2 (for diamonds) and python3-statsmodels.
#   tests/golden/fits/make-samples.sh
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
out=$here/samples
mkdir -p "$out/r" "$out/lavaan" "$out/statsmodels"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# R: a console transcript as R CMD BATCH writes it (prompts, [1] prefixes).
cat >glm.R <<'R'
m1 <- glm(count ~ spray, family = poisson, data = InsectSprays)
summary(m1)
AIC(m1); logLik(m1)
d <- mtcars; d$mpg[c(3, 7)] <- NA
m2 <- glm(mpg ~ wt + hp, data = d)
summary(m2)
m3 <- glm(mpg ~ wt, family = Gamma(link = "log"), data = mtcars)
summary(m3)
m4 <- glm(count ~ spray, family = quasipoisson, data = InsectSprays)
summary(m4)
R
R CMD BATCH --no-save --no-timing glm.R "$out/r/glm-transcript.Rout"

# lme4: ML and REML fits, their anova(), a GLMM, print() beside summary().
cat >mixed.R <<'R'
suppressMessages(library(lme4))
f1 <- lmer(Reaction ~ Days + (1 | Subject), sleepstudy, REML = FALSE)
f2 <- lmer(Reaction ~ Days + (Days | Subject), sleepstudy, REML = FALSE)
summary(f1)
summary(f2)
anova(f1, f2)
g1 <- glmer(cbind(incidence, size - incidence) ~ period + (1 | herd), data = cbpp, family = binomial)
summary(g1)
R
Rscript --vanilla mixed.R >"$out/r/lme4-ml.txt" 2>&1
cat >reml.R <<'R'
suppressMessages(library(lme4))
f3 <- lmer(Reaction ~ Days + (Days | Subject), sleepstudy)
summary(f3)
f4 <- lmer(Reaction ~ Days + (1 | Subject) + (0 + Days | Subject), sleepstudy)
print(f4)
R
Rscript --vanilla reml.R >"$out/r/lme4-reml.txt" 2>&1
# Three ML fits of one data set, as a paper would rank them.
cat >sleepstudy.R <<'R'
suppressMessages(library(lme4))
f1 <- lmer(Reaction ~ Days + (1 | Subject), sleepstudy, REML = FALSE)
f2 <- lmer(Reaction ~ Days + (Days | Subject), sleepstudy, REML = FALSE)
f3 <- lmer(Reaction ~ Days + (1 | Subject) + (0 + Days | Subject), sleepstudy, REML = FALSE)
summary(f1)
summary(f2)
summary(f3)
R
Rscript --vanilla sleepstudy.R >"$out/r/sleepstudy-ml.txt" 2>&1
# A summary R printed only in part, max.print being too small for its
# coefficient table: its terms are cut short.
Rscript --vanilla -e 'options(max.print = 12); summary(glm(mpg ~ wt + hp + qsec + am, data = mtcars))' \
  >"$out/r/max-print.txt" 2>&1
Rscript --vanilla -e 'suppressMessages(library(lme4)); options(max.print = 8)' \
  -e 'sleepstudy$Days2 <- sleepstudy$Days^2; sleepstudy$Days3 <- sleepstudy$Days^3' \
  -e 'summary(lmer(Reaction ~ Days + Days2 + Days3 + (1 | Subject), sleepstudy, REML = FALSE), correlation = FALSE)' \
  >"$out/r/lme4-max-print.txt" 2>&1
# Newer lme4 heads the -2 log-likelihood "-2*log(L)" where 1.1-31 writes
# "deviance"; the same output with the newer heading.
sed 's/  logLik deviance df.resid/  logLik -2*log(L) df.resid/' "$out/r/lme4-ml.txt" >"$out/r/lme4-newer-heading.txt"

# logLik() alone: n is not printed.
Rscript --vanilla -e 'm <- glm(count ~ spray, family = poisson, data = InsectSprays); logLik(m)' \
  >"$out/r/loglik-only.txt" 2>&1

# An inverse Gaussian glm, whose AIC counts the dispersion as Gamma's does;
# beside it (.expected) what R's logLik(), nobs() and AIC() say of the fit.
cat >inverse-gaussian.R <<'R'
m <- glm(mpg ~ wt, family = inverse.gaussian, data = mtcars)
printed <- capture.output(summary(m))
writeLines(printed)
aic <- sub("^AIC: ", "", grep("^AIC: ", printed, value = TRUE))
ll <- logLik(m)
expected <- data.frame(model = "mpg ~ wt", line = which(printed == "Call:")[1], kind = "ML",
                       logLik = as.numeric(ll), k = attr(ll, "df"), n = nobs(m), aic = AIC(m), bic = NA,
                       tolerance = 0.5 * 10^-nchar(sub("^[^.]*\\.", "", aic)))
write.table(expected, commandArgs(TRUE)[1], sep = "\t", quote = FALSE, row.names = FALSE)
R
Rscript --vanilla inverse-gaussian.R "$out/r/inverse-gaussian.expected" >"$out/r/inverse-gaussian.log" 2>&1

# knitr: the same fits rendered to Markdown, "## " before printed lines.
cat >knitted.Rmd <<'R'
---
title: Two Poisson models
output: md_document
---

```{r}
a <- glm(count ~ spray, family = poisson, data = InsectSprays)
summary(a)
b <- glm(count ~ 1, family = poisson, data = InsectSprays)
summary(b)
```
R
Rscript --vanilla -e 'knitr::knit("knitted.Rmd", quiet = TRUE)' >/dev/null
cp knitted.md "$out/r/knitted.md"

# lavaan: ML, MLR with an equality constraint, two groups with missing
# data, several models in one file, and WLSMV, which gives no likelihood.
cat >lavaan.R <<'R'
suppressMessages(library(lavaan))
hs <- ' visual  =~ x1 + x2 + x3
        textual =~ x4 + x5 + x6
        speed   =~ x7 + x8 + x9 '
fit <- cfa(hs, data = HolzingerSwineford1939)
summary(fit, fit.measures = TRUE)
eq <- ' visual  =~ x1 + a*x2 + a*x3
        textual =~ x4 + x5 + x6
        speed   =~ x7 + x8 + x9 '
fit_mlr <- cfa(eq, data = HolzingerSwineford1939, estimator = "MLR")
summary(fit_mlr, fit.measures = TRUE)
R
Rscript --vanilla lavaan.R >"$out/lavaan/two-models.txt" 2>&1
cat >groups.R <<'R'
suppressMessages(library(lavaan))
d <- HolzingerSwineford1939
set.seed(1); d$x5[sample(nrow(d), 20)] <- NA
hs <- ' visual  =~ x1 + x2 + x3
        textual =~ x4 + x5 + x6
        speed   =~ x7 + x8 + x9 '
groups <- cfa(hs, data = d, group = "school", missing = "listwise")
summary(groups, fit.measures = TRUE)
R
Rscript --vanilla groups.R >"$out/lavaan/groups-missing.txt" 2>&1
# One group with rows left out (listwise): n is the "Used" column, not
# "Total"; beside it what lavaan's logLik(), nobs() and AIC() say.
cat >one-group.R <<'R'
suppressMessages(library(lavaan))
d <- HolzingerSwineford1939
set.seed(1); d$x5[sample(nrow(d), 20)] <- NA
hs <- ' visual  =~ x1 + x2 + x3
        textual =~ x4 + x5 + x6
        speed   =~ x7 + x8 + x9 '
fit <- cfa(hs, data = d, missing = "listwise")
printed <- capture.output(summary(fit, fit.measures = TRUE))
writeLines(printed)
ll <- logLik(fit)
expected <- data.frame(model = "one-group-missing", line = grep("^lavaan ", printed)[1], kind = "ML",
                       logLik = as.numeric(ll), k = attr(ll, "df"), n = nobs(fit), aic = AIC(fit),
                       bic = BIC(fit), tolerance = 0.0005)
write.table(expected, commandArgs(TRUE)[1], sep = "\t", quote = FALSE, row.names = FALSE)
R
Rscript --vanilla one-group.R "$out/lavaan/one-group-missing.expected" >"$out/lavaan/one-group-missing.log" 2>&1
cat >wlsmv.R <<'R'
suppressMessages(library(lavaan))
d <- HolzingerSwineford1939
for (v in paste0("x", 1:9)) d[[v]] <- cut(d[[v]], 3, labels = FALSE)
fit <- cfa(' visual =~ x1 + x2 + x3
             textual =~ x4 + x5 + x6 ', data = d, ordered = paste0("x", 1:6))
summary(fit, fit.measures = TRUE)
R
Rscript --vanilla wlsmv.R >"$out/lavaan/wlsmv.txt" 2>&1

# statsmodels: OLS (whose AIC leaves out the variance), Logit and a
# Poisson GLM (which print no AIC), and a notebook holding one of them.
py=/usr/bin/python3
cat >sm.py <<'PY'
import sys
import numpy as np
import statsmodels.api as sm
import statsmodels.formula.api as smf
spector = sm.datasets.spector.load_pandas().data
scotland = sm.datasets.scotland.load_pandas().data
which = sys.argv[1]
if which == "ols":
    print(smf.ols("GRADE ~ GPA + TUCE + PSI", spector).fit().summary())
elif which == "logit":
    print(smf.logit("GRADE ~ GPA + TUCE + PSI", spector).fit(disp=0).summary())
elif which == "glm":
    print(smf.glm("YES ~ COUTAX + UNEMPF", scotland, family=sm.families.Gamma()).fit().summary())
elif which == "data":
    spector.to_csv(sys.argv[2], index=False)
    scotland.to_csv(sys.argv[3], index=False)
PY
$py sm.py ols >"$out/statsmodels/ols.txt"
$py sm.py logit >"$out/statsmodels/logit.txt"
$py sm.py glm >"$out/statsmodels/gamma-glm.txt"
$py sm.py data "$out/statsmodels/grades.csv" "$out/statsmodels/scotland.csv"
$py - "$out/statsmodels/ols.txt" >"$out/statsmodels/notebook.ipynb" <<'PY'
import json, sys
text = open(sys.argv[1]).read()
cell = {"cell_type": "code", "execution_count": 1, "id": "a1", "metadata": {},
        "outputs": [{"name": "stdout", "output_type": "stream", "text": text.splitlines(True)}],
        "source": ["import statsmodels.formula.api as smf\n",
                   "print(smf.ols(\"GRADE ~ GPA + TUCE + PSI\", spector).fit().summary())"]}
print(json.dumps({"cells": [cell], "metadata": {}, "nbformat": 4, "nbformat_minor": 5}, indent=1))
PY
# MARK, Stata, SAS and SPSS: fits made in R (CJS likelihoods of a small set
# of encounter histories; logistic and linear regressions of mtcars and
# diamonds; Poisson regressions of warpbreaks; mixed models of sleepstudy),
# printed in each program's layout, and beside each the numbers R computes
# for the same fits (NAME.expected), which the readers' tests hold every
# number to without needing R.
for program in mark stata sas spss; do
  mkdir -p "$out/$program"
  Rscript --vanilla "$here/$program-samples.R" "$out/$program"
done
echo "samples written to $out"
