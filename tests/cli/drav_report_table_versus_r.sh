#!/usr/bin/env bash
# drav-report table and average against R: R fits linear models, writes
# their log-likelihoods, K and n with write.csv, and then checks what Drav
# computed from them against its own AIC() and BIC(), AICc by its textbook
# formula, the weights, and bbmle's AICctab when bbmle is installed. R is
# never needed to build or run Drav: without it this test says so and is
# skipped.
set -u
bin=$1
if ! command -v Rscript >/dev/null; then
  echo "SKIPPED: Rscript is not installed (apt-get install r-base-core); Drav was not checked against R"
  exit 77
fi
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

cat >"$tmp/fit.R" <<'R'
dir <- commandArgs(trailingOnly = TRUE)[1]
forms <- c("mpg ~ wt", "mpg ~ wt + hp", "mpg ~ wt + qsec", "mpg ~ wt + qsec + am", "mpg ~ hp",
           "mpg ~ wt * hp", "mpg ~ disp + drat")
fits <- lapply(forms, function(f) lm(as.formula(f), data = mtcars))
names(fits) <- forms
k <- sapply(fits, function(f) attr(logLik(f), "df"))
wt <- sapply(fits, function(f) if ("wt" %in% names(coef(f))) coef(f)[["wt"]] else NA)
se <- sapply(fits, function(f) if ("wt" %in% names(coef(f))) sqrt(diag(vcov(f)))[["wt"]] else NA)
write.csv(data.frame(model = forms, logLik = sapply(fits, function(f) as.numeric(logLik(f))), df = k,
                     nobs = sapply(fits, nobs), wt = wt, wt_se = se),
          file.path(dir, "fits.csv"), row.names = FALSE)
# R's own criteria, kept apart from what Drav is given.
saveRDS(list(aic = sapply(fits, AIC), bic = sapply(fits, BIC), k = k, n = 32, wt = wt, se = se),
        file.path(dir, "r.rds"))
R

cat >"$tmp/check.R" <<'R'
dir <- commandArgs(trailingOnly = TRUE)[1]
r <- readRDS(file.path(dir, "r.rds"))
bad <- 0
same <- function(what, drav, expected) {
  ok <- isTRUE(all.equal(unname(drav), unname(expected), tolerance = 1e-12))
  if (!ok) { cat("MISMATCH", what, "\n"); print(cbind(drav, expected)); bad <<- bad + 1 }
}
weights <- function(x) { d <- x - min(x); exp(-d / 2) / sum(exp(-d / 2)) }
for (crit in c("aic", "aicc", "bic")) {
  t <- read.csv(file.path(dir, paste0(crit, ".csv")))
  t <- t[order(match(t$model, names(r$aic))), ]
  expected <- switch(crit, aic = r$aic, bic = r$bic,
                     aicc = r$aic + 2 * r$k * (r$k + 1) / (r$n - r$k - 1))
  same(crit, t[[crit]], expected)
  same(paste(crit, "weight"), t$weight, weights(expected))
  same(paste(crit, "evidence ratio"), t$evidence_ratio, max(weights(expected)) / weights(expected))
  if (requireNamespace("bbmle", quietly = TRUE) && crit == "aicc") {
    fits <- lapply(names(r$aic), function(f) lm(as.formula(f), data = mtcars))
    tab <- do.call(bbmle::AICctab, c(fits, list(weights = TRUE, base = TRUE, sort = FALSE, nobs = 32)))
    same("bbmle AICctab weight", t$weight, as.numeric(tab$weight))
    same("bbmle AICctab AICc", t$aicc, as.numeric(tab$AICc))
  }
}
a <- read.csv(file.path(dir, "average.csv"))
has <- !is.na(r$wt)
aicc <- r$aic + 2 * r$k * (r$k + 1) / (r$n - r$k - 1)
w <- weights(aicc[has])
est <- sum(w * r$wt[has])
se <- sqrt(sum(w * (r$se[has]^2 + (r$wt[has] - est)^2)))
same("averaged estimate", a$estimate, est)
same("unconditional SE", a$se, se)
same("lower bound", a$lower, est - qnorm(0.975) * se)
quit(status = if (bad == 0) 0 else 1)
R

Rscript --vanilla "$tmp/fit.R" "$tmp" || { echo "FAIL: R could not fit the models"; exit 1; }
for crit in aic aicc bic; do
  "$bin" table --criterion "$crit" --format csv "$tmp/fits.csv" >"$tmp/$crit.csv" || { echo "FAIL: drav-report table --criterion $crit"; exit 1; }
done
"$bin" average --criterion aicc --estimate wt --se wt_se --format csv "$tmp/fits.csv" >"$tmp/average.csv" ||
  { echo "FAIL: drav-report average"; exit 1; }
if Rscript --vanilla "$tmp/check.R" "$tmp"; then
  echo "drav_report_table_versus_r: 1 passed, 0 failed"
else
  echo "drav_report_table_versus_r: 0 passed, 1 failed"
  exit 1
fi
