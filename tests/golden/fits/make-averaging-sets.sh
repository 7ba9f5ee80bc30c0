#!/usr/bin/env bash
# Writes sets of fits as researchers print them, one folder a set, in
# tests/golden/fits/averaging, for importance and averages read from the
# printed coefficient tables. Beside each set, expected.tsv holds what the
# program's own fits give (coef(), vcov(), logLik(); params, bse, llf):
# each term's importance (the summed AICc weights of the models that hold
# it), its conditional average over those models with the revised
# unconditional SE (Burnham & Anderson 2002, eq. 6.12), and its full
# average, a model without the term counting as 0 with SE 0; computed in
# base R and numpy, never from the printed text. The R sets also carry
# models.csv and tidy.csv, the same fits exported as a table and its long
# coefficients. The tests never run R or Python. Needs r-base-core,
# r-cran-lme4, r-cran-nlme, r-cran-lavaan and python3-statsmodels.
#   tests/golden/fits/make-averaging-sets.sh
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
out=$here/averaging
rm -rf "$out"
mkdir -p "$out"
cd "$out"

cat >../averaging.R.tmp <<'R'
suppressPackageStartupMessages(library(lme4))
# coefs(fit) and ses(fit): the named estimates and their SEs. lavaan's are
# its parameterEstimates() but the variances, named "lhs op rhs" ("x1 ~1"
# for an intercept), a fixed parameter's SE unknown.
lavaanTable <- function(f) {
  p <- lavaan::parameterEstimates(f)
  p <- p[!(p$op == "~~" & p$lhs == p$rhs) & p$op %in% c("=~", "~", "~~", "~1"), ]
  names <- ifelse(p$op == "~1", paste(p$lhs, "~1"), paste(p$lhs, p$op, p$rhs))
  list(est = setNames(p$est, names), se = setNames(ifelse(p$se == 0, NA, p$se), names))
}
coefs <- function(f) {
  if (inherits(f, "lavaan")) return(lavaanTable(f)$est)
  if (inherits(f, "merMod")) fixef(f) else coef(f)
}
ses <- function(f) if (inherits(f, "lavaan")) lavaanTable(f)$se else sqrt(diag(as.matrix(vcov(f))))
expected <- function(dir, fits) {
  ll <- sapply(fits, function(f) as.numeric(logLik(f)))
  k <- sapply(fits, function(f) attr(logLik(f), "df"))
  n <- sapply(fits, nobs)
  aicc <- -2 * ll + 2 * k + 2 * k * (k + 1) / (n - k - 1)
  w <- exp(-(aicc - min(aicc)) / 2)
  w <- w / sum(w)
  # A coefficient a fit could not estimate (NA, aliased) is one it does not hold.
  terms <- unique(unlist(lapply(fits, function(f) names(coefs(f))[!is.na(coefs(f))])))
  rows <- lapply(terms, function(t) {
    held <- sapply(fits, function(f) t %in% names(coefs(f)) && !is.na(coefs(f)[t]))
    est <- sapply(fits, function(f) if (t %in% names(coefs(f))) unname(coefs(f)[t]) else 0)
    se <- sapply(fits, function(f) if (t %in% names(coefs(f))) unname(ses(f)[t]) else 0)
    est[!held] <- 0
    se[!held] <- 0
    wc <- w[held] / sum(w[held])
    cond <- sum(wc * est[held])
    full <- sum(w * est)
    data.frame(term = t, importance = sum(w[held]), models = sum(held), estimate = cond,
               se = sqrt(sum(wc * (se[held]^2 + (est[held] - cond)^2))), full_estimate = full,
               full_se = sqrt(sum(w * (se^2 + (est - full)^2))))
  })
  e <- do.call(rbind, rows)
  e[] <- lapply(e, function(x) if (is.numeric(x)) format(x, digits = 15) else x)
  write.table(e, file.path(dir, "expected.tsv"), sep = "\t", quote = FALSE, row.names = FALSE)
  names <- paste0("m", seq_along(fits))
  write.csv(data.frame(model = names, logLik = format(ll, digits = 15), df = k, nobs = n),
            file.path(dir, "models.csv"), row.names = FALSE, quote = FALSE)
  tidy <- do.call(rbind, lapply(seq_along(fits), function(i) {
    data.frame(model = names[i], term = names(coefs(fits[[i]])), estimate = format(unname(coefs(fits[[i]])), digits = 15),
               std.error = format(unname(ses(fits[[i]])), digits = 15))
  }))
  write.csv(tidy, file.path(dir, "tidy.csv"), row.names = FALSE)
}
R

# batch NAME OBJECTS: the fits and summaries of the R script on standard
# input printed by R CMD BATCH into NAME/fits.Rout, and the expected
# numbers over the fits OBJECTS ("m1, m2").
batch() {
  mkdir -p "$1"
  cat >"$1/fits.R"
  R CMD BATCH --no-save --no-timing "$1/fits.R" "$1/fits.Rout"
  Rscript --vanilla -e 'source("../averaging.R.tmp")' -e "source('$1/fits.R', echo = FALSE, print.eval = FALSE)" \
    -e "expected('$1', list($2))"
  rm "$1/fits.R"
}

# Eight gaussian glms of the Swiss fertility data, every subset of three
# predictors, each summary() sink()ed into a file of its own: a folder of
# outputs.
mkdir swiss-glm
Rscript --vanilla - <<'R'
source("../averaging.R.tmp")
predictors <- c("Education", "Catholic", "Infant.Mortality")
subsets <- unlist(lapply(0:3, function(m) combn(predictors, m, simplify = FALSE)), recursive = FALSE)
fits <- lapply(subsets, function(p) {
  f <- as.formula(paste("Fertility ~", if (length(p)) paste(p, collapse = " + ") else "1"))
  eval(bquote(glm(.(f), data = swiss)))
})
for (i in seq_along(fits)) {
  sink(sprintf("swiss-glm/m%d.txt", i))
  print(summary(fits[[i]]))
  sink()
}
expected("swiss-glm", fits)
R

# Poisson glms of the warp breaks, factors and their interaction, printed
# one after another in one R CMD BATCH transcript.
batch warpbreaks-poisson "m1, m2, m3, m4" <<'R'
m1 <- glm(breaks ~ wool, family = poisson, data = warpbreaks)
m2 <- glm(breaks ~ tension, family = poisson, data = warpbreaks)
m3 <- glm(breaks ~ wool + tension, family = poisson, data = warpbreaks)
m4 <- glm(breaks ~ wool * tension, family = poisson, data = warpbreaks)
summary(m1)
summary(m2)
summary(m3)
summary(m4)
R

# Gaussian glms of the motor trend cars, one with a term that duplicates
# another (printed NA: aliased, so not held), and terms whose names hold a
# blank ("poly(hp, 2)1"), in one transcript.
batch mtcars-aliased "m1, m2, m3" <<'R'
mtcars$wt2 <- 2 * mtcars$wt
m1 <- glm(mpg ~ wt, data = mtcars)
m2 <- glm(mpg ~ wt + poly(hp, 2), data = mtcars)
m3 <- glm(mpg ~ wt + wt2 + poly(hp, 2) + qsec, data = mtcars)
summary(m1)
summary(m2)
summary(m3)
R
rm mtcars-aliased/models.csv mtcars-aliased/tidy.csv

# nlme: generalized least squares fits of the orthodontic growth data by
# maximum likelihood, their summaries' tables headed "Value Std.Error".
batch orthodont-gls "m1, m2, m3" <<'R'
suppressPackageStartupMessages(library(nlme))
m1 <- gls(distance ~ age, Orthodont, method = "ML")
m2 <- gls(distance ~ age + Sex, Orthodont, method = "ML")
m3 <- gls(distance ~ age * Sex, Orthodont, method = "ML")
summary(m1)
summary(m2)
summary(m3)
R
rm orthodont-gls/models.csv orthodont-gls/tidy.csv

# lme4 fits of the sleep-deprivation study by maximum likelihood, their
# fixed effects nested, random effects the same.
batch sleepstudy-lmer "m1, m2, m3" <<'R'
suppressPackageStartupMessages(library(lme4))
sleepstudy$Days2 <- sleepstudy$Days^2
m1 <- lmer(Reaction ~ 1 + (Days | Subject), sleepstudy, REML = FALSE)
m2 <- lmer(Reaction ~ Days + (Days | Subject), sleepstudy, REML = FALSE)
m3 <- lmer(Reaction ~ Days + Days2 + (Days | Subject), sleepstudy, REML = FALSE)
summary(m1)
summary(m2)
summary(m3)
R

# lavaan: three factor models of the Holzinger and Swineford tests with
# their means, one with two loadings held equal, one with a cross-loading
# and a residual covariance, each summary() printed with its fit measures.
batch holzinger-lavaan "m1, m2, m3" <<'R'
suppressPackageStartupMessages(library(lavaan))
hs <- function(model) cfa(model, HolzingerSwineford1939, meanstructure = TRUE)
m1 <- hs("visual =~ x1 + x2 + x3\n textual =~ x4 + x5 + x6\n speed =~ x7 + x8 + x9")
m2 <- hs("visual =~ x1 + a*x2 + a*x3\n textual =~ x4 + x5 + x6\n speed =~ x7 + x8 + x9")
m3 <- hs("visual =~ x1 + x2 + x3 + x9\n textual =~ x4 + x5 + x6\n speed =~ x7 + x8 + x9\n x7 ~~ x8")
summary(m1, fit.measures = TRUE)
summary(m2, fit.measures = TRUE)
summary(m3, fit.measures = TRUE)
R
rm holzinger-lavaan/models.csv holzinger-lavaan/tidy.csv

# One set fitted in two programs: logits of statsmodels' grades data without
# PSI in R, those with it in statsmodels (formula names: "Intercept"),
# averaged together under R's names by term-names.map. The expected
# numbers are R's own over all eight fits.
mkdir grades-two-programs
/usr/bin/python3 - <<'PY'
import itertools, statsmodels.api as sm, statsmodels.formula.api as smf
data = sm.datasets.spector.load_pandas().data
data.to_csv("grades.csv.tmp", index=False)
with open("grades-two-programs/statsmodels.txt", "w") as printed:
    for m in range(3):
        for subset in itertools.combinations(["GPA", "TUCE"], m):
            fit = smf.logit("GRADE ~ " + " + ".join(list(subset) + ["PSI"]), data).fit(disp=0)
            print(fit.summary(), file=printed)
            print(file=printed)
PY
batch grades-two-programs "m1, m2, m3, m4, m5, m6, m7, m8" <<'R'
grades <- read.csv("grades.csv.tmp")
m1 <- glm(GRADE ~ 1, family = binomial, data = grades)
m2 <- glm(GRADE ~ GPA, family = binomial, data = grades)
m3 <- glm(GRADE ~ TUCE, family = binomial, data = grades)
m4 <- glm(GRADE ~ GPA + TUCE, family = binomial, data = grades)
summary(m1)
summary(m2)
summary(m3)
summary(m4)
# Fitted, not printed: statsmodels prints these.
m5 <- glm(GRADE ~ PSI, family = binomial, data = grades)
m6 <- glm(GRADE ~ GPA + PSI, family = binomial, data = grades)
m7 <- glm(GRADE ~ TUCE + PSI, family = binomial, data = grades)
m8 <- glm(GRADE ~ GPA + TUCE + PSI, family = binomial, data = grades)
R
mv grades-two-programs/fits.Rout grades-two-programs/r-glm.Rout
rm grades-two-programs/models.csv grades-two-programs/tidy.csv grades.csv.tmp ../averaging.R.tmp
printf 'Intercept = (Intercept)\n' >grades-two-programs/term-names.map

# statsmodels: every subset of the predictors of a
# grade, as Logit fits, each summary() printed, all in one file.
mkdir grades-logit
/usr/bin/python3 - <<'PY'
import itertools, numpy as np, statsmodels.api as sm
data = sm.datasets.spector.load_pandas().data
predictors = ["GPA", "TUCE", "PSI"]
fits = []
with open("grades-logit/summaries.txt", "w") as printed:
    for m in range(4):
        for subset in itertools.combinations(predictors, m):
            x = sm.add_constant(data[list(subset)], has_constant="add")
            fit = sm.Logit(data["GRADE"], x).fit(disp=0)
            fits.append(fit)
            print(fit.summary(), file=printed)
            print(file=printed)
ll = np.array([f.llf for f in fits]); k = np.array([len(f.params) for f in fits]); n = np.array([f.nobs for f in fits])
aicc = -2 * ll + 2 * k + 2 * k * (k + 1) / (n - k - 1)
w = np.exp(-(aicc - aicc.min()) / 2); w /= w.sum()
terms = []
for f in fits:
    terms += [t for t in f.params.index if t not in terms]
with open("grades-logit/expected.tsv", "w") as e:
    print("term\timportance\tmodels\testimate\tse\tfull_estimate\tfull_se", file=e)
    for t in terms:
        held = np.array([t in f.params.index for f in fits])
        est = np.array([f.params.get(t, 0.0) for f in fits]); se = np.array([f.bse.get(t, 0.0) for f in fits])
        wc = w[held] / w[held].sum(); cond = (wc * est[held]).sum(); full = (w * est).sum()
        values = [w[held].sum(), held.sum(), cond, np.sqrt((wc * (se[held] ** 2 + (est[held] - cond) ** 2)).sum()),
                  full, np.sqrt((w * (se ** 2 + (est - full) ** 2)).sum())]
        print("\t".join([t] + [repr(float(v)) for v in values]), file=e)
PY
