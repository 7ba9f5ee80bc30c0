#!/usr/bin/env bash
# Writes outputs as researchers print them, one file a way of printing, in
# tests/golden/fits/real: R console transcripts, Rscript's plain output,
# knitr's Markdown and HTML, statsmodels' summaries. Each sample NAME.EXT
# has NAME.truth beside it: for every model the output prints, in the order
# it prints them, what the program itself says of the fit (logLik(),
# attr(, "df"), nobs(); llf, the parameters, nobs), computed by a second run
# of the same fits that prints nothing. The tests never run R or Python:
# they read what this wrote. Needs Debian's r-base-core, r-cran-mass,
# r-cran-lme4, r-cran-lmertest, r-cran-nlme, r-cran-glmmtmb, r-cran-pscl,
# r-cran-aer, r-cran-survival, r-cran-ordinal, r-cran-bbmle, r-cran-broom,
# r-cran-lavaan, r-cran-knitr, r-cran-markdown and python3-statsmodels.
#   tests/golden/fits/make-real-outputs.sh
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
out=$here/real
mkdir -p "$out"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# What R says of a fit: kind (ML, REML or partial), logLik, K, n.
cat >truth.R <<'R'
truth <- function(path, fits, kinds) {
  rows <- lapply(seq_along(fits), function(i) {
    ll <- fits[[i]]
    if (!inherits(ll, "logLik")) ll <- logLik(ll)
    # The observations fitted: for nlme's REML fits logLik()'s own "nobs"
    # is N - p, which is not the n of AICc.
    n <- tryCatch(nobs(fits[[i]]), error = function(e) NULL)
    if (is.null(n)) n <- attr(ll, "nobs")
    data.frame(kind = kinds[i], logLik = format(as.numeric(ll), digits = 15), k = attr(ll, "df"),
               n = if (is.null(n) || length(n) == 0) NA else n)
  })
  write.table(do.call(rbind, rows), path, sep = "\t", quote = FALSE, row.names = FALSE)
}
R

# sample NAME EXT HOW: the fits (FITS.R), what is printed (SHOW.R) and the
# models it prints in order with their kinds (MODELS: "m1 ML, m2 REML").
# HOW is batch (R CMD BATCH's transcript), rscript (plain output), sink
# (the file sink() wrote while the code ran), knitr-md (Markdown) or
# knitr-html (an .Rhtml document knitted).
sample() {
  local name=$1 ext=$2 how=$3 models=$4
  local objects="" kinds="" pair
  IFS=, read -ra pairs <<<"$models"
  for pair in "${pairs[@]}"; do
    read -r object kind <<<"$pair"
    objects+="${objects:+, }$object"
    kinds+="${kinds:+, }\"$kind\""
  done
  cat FITS.R SHOW.R >"$name.R"
  case $how in
    batch) R CMD BATCH --no-save --no-timing "$name.R" "$out/$name.$ext" ;;
    rscript) Rscript --vanilla "$name.R" >"$out/$name.$ext" 2>&1 ;;
    sink)
      { cat FITS.R; printf 'sink("%s")\n' "$out/$name.$ext"; cat SHOW.R; printf 'sink()\n'; } >"$name.R"
      Rscript --vanilla "$name.R" >/dev/null 2>&1 ;;
    knitr-md)
      { printf -- '---\ntitle: "%s"\n---\n\n```{r}\n' "$name"; cat FITS.R SHOW.R; printf '```\n'; } >"$name.Rmd"
      Rscript --vanilla -e "knitr::knit('$name.Rmd', quiet = TRUE)" >/dev/null
      cp "$name.md" "$out/$name.$ext" ;;
    knitr-markdown-html)
      # R Markdown through knitr and the markdown package: the code and
      # what it printed in <pre><code> blocks of a whole page.
      { printf -- '---\ntitle: "%s"\n---\n\n```{r}\n' "$name"; cat FITS.R SHOW.R; printf '```\n'; } >"$name.Rmd"
      Rscript --vanilla -e "knitr::knit2html('$name.Rmd', quiet = TRUE)" >/dev/null 2>&1
      cp "$name.html" "$out/$name.$ext" ;;
    knitr-html)
      # knitr's own HTML documents: the code and what it printed in <pre>
      # blocks, with HTML's entities for <, > and &.
      { printf '<html><body>\n<h1>%s</h1>\n<!--begin.rcode\n' "$name"; cat FITS.R SHOW.R
        printf 'end.rcode-->\n</body></html>\n'; } >"$name.Rhtml"
      Rscript --vanilla -e "knitr::knit('$name.Rhtml', quiet = TRUE)" >/dev/null
      cp "$name.html" "$out/$name.$ext" ;;
  esac
  { cat truth.R FITS.R; echo "truth('$out/$name.truth', list($objects), c($kinds))"; } >"$name-truth.R"
  Rscript --vanilla "$name-truth.R" >/dev/null 2>&1
}

# A summary() of one glm, then print() of another: the print is a model of
# its own, and none of its lines belong to the summary above it.
cat >FITS.R <<'R'
m1 <- glm(count ~ spray, family = poisson, data = InsectSprays)
m0 <- glm(count ~ 1, family = poisson, data = InsectSprays)
R
cat >SHOW.R <<'R'
summary(m1)
m0
R
sample glm-summary-then-print Rout batch "m1 ML, m0 ML"

# summary() of a negative binomial glm, then a proportional-odds model.
cat >FITS.R <<'R'
suppressMessages(library(MASS))
nb <- glm.nb(Days ~ Sex/(Age + Eth * Lrn), data = quine)
po <- polr(Sat ~ Infl + Type + Cont, weights = Freq, data = housing)
R
cat >SHOW.R <<'R'
summary(nb)
po
R
sample negbin-then-polr txt rscript "nb ML, po ML"

# lmerTest's summary of a REML fit: its Satterthwaite table, its "---" and
# significance codes below the fixed effects.
cat >FITS.R <<'R'
suppressMessages(library(lmerTest))
f <- lmer(Reaction ~ Days + (Days | Subject), sleepstudy)
R
cat >SHOW.R <<'R'
summary(f)
R
sample lmertest-reml txt rscript "f REML"

# logLik() of a REML fit and of an ML fit, each after its call.
cat >FITS.R <<'R'
suppressMessages(library(lme4))
reml <- lmer(Reaction ~ Days + (Days | Subject), sleepstudy)
ml <- lmer(Reaction ~ Days + (Days | Subject), sleepstudy, REML = FALSE)
lr <- logLik(reml, REML = TRUE)
lm_ <- logLik(ml)
R
cat >SHOW.R <<'R'
logLik(reml, REML = TRUE)
logLik(ml)
R
sample loglik-reml-and-ml Rout batch "lr REML, lm_ ML"

# print() of a glm and of a negative binomial glm.
cat >FITS.R <<'R'
suppressMessages(library(MASS))
g <- glm(cbind(ncases, ncontrols) ~ agegp + tobgp, family = binomial, data = esoph)
nb <- glm.nb(Days ~ Sex + Age, data = quine)
R
cat >SHOW.R <<'R'
print(g)
print(nb)
R
sample print-glm-and-negbin txt rscript "g ML, nb ML"

# AIC() and BIC() tables of three fits.
cat >FITS.R <<'R'
a <- lm(mpg ~ wt, data = mtcars)
b <- lm(mpg ~ wt + hp, data = mtcars)
c <- lm(mpg ~ wt * hp, data = mtcars)
R
cat >SHOW.R <<'R'
AIC(a, b, c)
R
sample aic-table Rout batch "a ML, b ML, c ML"

# nlme: lme by REML (summary) and gls by ML (print).
cat >FITS.R <<'R'
suppressMessages(library(nlme))
l1 <- lme(distance ~ age, random = ~ 1 | Subject, data = Orthodont)
g1 <- gls(distance ~ age + Sex, data = Orthodont, method = "ML")
R
cat >SHOW.R <<'R'
summary(l1)
g1
R
sample nlme-lme-and-gls txt rscript "l1 REML, g1 ML"

# glmmTMB's summary.
cat >FITS.R <<'R'
suppressMessages(library(glmmTMB))
t1 <- glmmTMB(count ~ mined + (1 | site), family = poisson, data = Salamanders)
R
cat >SHOW.R <<'R'
summary(t1)
R
sample glmmtmb txt rscript "t1 ML"

# pscl's zero-inflated and hurdle models, AER's tobit.
cat >FITS.R <<'R'
suppressMessages({library(pscl); library(AER)})
data("bioChemists", package = "pscl")
z <- zeroinfl(art ~ fem + ment | ment, data = bioChemists)
h <- hurdle(art ~ fem + ment | ment, data = bioChemists)
data("Affairs", package = "AER")
tb <- tobit(affairs ~ age + yearsmarried + religiousness, data = Affairs)
R
cat >SHOW.R <<'R'
summary(z)
summary(h)
summary(tb)
R
sample pscl-and-tobit txt rscript "z ML, h ML, tb ML"

# survival: a parametric survreg, and coxph's partial likelihood, which
# its summary does not print and logLik() after it does.
cat >FITS.R <<'R'
suppressMessages(library(survival))
s <- survreg(Surv(futime, fustat) ~ ecog.ps + rx, data = ovarian, dist = "weibull")
cx <- coxph(Surv(futime, fustat) ~ ecog.ps + rx, data = ovarian)
R
cat >SHOW.R <<'R'
summary(s)
summary(cx)
logLik(cx)
R
sample survreg-and-coxph txt rscript "s ML, cx partial"

# Cox models of one data set as a transcript: print() of each (K in its
# likelihood ratio test's df), logLik() after it; a null model, whose
# print shows its partial log-likelihood.
cat >FITS.R <<'R'
suppressMessages(library(survival))
c1 <- coxph(Surv(time, status) ~ age + sex, data = lung)
c2 <- coxph(Surv(time, status) ~ age + sex + ph.ecog, data = lung, subset = !is.na(ph.ecog))
c0 <- coxph(Surv(time, status) ~ 1, data = lung)
R
cat >SHOW.R <<'R'
c1
logLik(c1)
c2
logLik(c2)
c0
R
sample coxph-print-and-loglik Rout batch "c1 partial, c2 partial, c0 partial"

# ordinal's cumulative link models.
cat >FITS.R <<'R'
suppressMessages(library(ordinal))
o1 <- clm(rating ~ temp + contact, data = wine)
o2 <- clmm(rating ~ temp + contact + (1 | judge), data = wine)
R
cat >SHOW.R <<'R'
summary(o1)
summary(o2)
R
sample ordinal-clm-clmm txt rscript "o1 ML, o2 ML"

# bbmle: an mle2 summary.
cat >FITS.R <<'R'
suppressMessages(library(bbmle))
set.seed(1); y <- rpois(40, 3)
p1 <- mle2(y ~ dpois(lambda = exp(loglambda)), start = list(loglambda = 0), data = data.frame(y = y))
R
cat >SHOW.R <<'R'
summary(p1)
R
sample bbmle-mle2 txt rscript "p1 ML"

# broom's glance() of two glms, printed as tibbles.
cat >FITS.R <<'R'
suppressMessages(library(broom))
m1 <- glm(count ~ spray, family = poisson, data = InsectSprays)
m0 <- glm(count ~ 1, family = poisson, data = InsectSprays)
R
cat >SHOW.R <<'R'
glance(m1)
glance(m0)
R
sample broom-glance txt rscript "m1 ML, m0 ML"

# glance() printed in full, as the refusal of its tibble says: with seven
# significant digits, and as a data frame.
cat >FITS.R <<'R'
suppressMessages(library(broom))
m1 <- glm(count ~ spray, family = poisson, data = InsectSprays)
m0 <- glm(count ~ 1, family = poisson, data = InsectSprays)
R
cat >SHOW.R <<'R'
options(pillar.sigfig = 7)
glance(m1)
as.data.frame(glance(m0))
R
sample broom-glance-digits txt rscript "m1 ML, m0 ML"

# summary() of two lm fits, then anova() of both: lm prints no
# log-likelihood, its residual standard error gives it.
cat >FITS.R <<'R'
m1 <- lm(mpg ~ wt, data = mtcars)
m2 <- lm(mpg ~ wt + hp + qsec, data = mtcars)
R
cat >SHOW.R <<'R'
summary(m1)
summary(m2)
anova(m1, m2)
R
sample lm-summaries-then-anova txt rscript "m1 ML, m2 ML"

# glmer stopped short of convergence: lme4's warnings before the summary
# (Rscript prints them first) and under it.
cat >FITS.R <<'R'
suppressMessages(library(lme4))
d <- cbpp
d$obs <- factor(seq_len(nrow(d)))
g2 <- glmer(cbind(incidence, size - incidence) ~ period + (1 | herd) + (1 | obs), data = d, family = binomial,
            control = glmerControl(optCtrl = list(maxfun = 30)))
R
cat >SHOW.R <<'R'
summary(g2)
R
sample glmer-convergence-warnings txt rscript "g2 ML"

# A file sink() wrote: summary() of a binomial glm and anova() of two lmer
# fits, output alone.
cat >FITS.R <<'R'
suppressMessages(library(lme4))
b <- glm(cbind(ncases, ncontrols) ~ agegp + alcgp, family = binomial, data = esoph)
f1 <- lmer(Reaction ~ Days + (1 | Subject), sleepstudy, REML = FALSE)
f2 <- lmer(Reaction ~ Days + (Days | Subject), sleepstudy, REML = FALSE)
R
cat >SHOW.R <<'R'
summary(b)
anova(f1, f2)
R
sample sink-glm-and-anova txt sink "b ML, f1 ML, f2 ML"

# lavaan's fitMeasures().
cat >FITS.R <<'R'
suppressMessages(library(lavaan))
hs <- ' visual =~ x1 + x2 + x3
        textual =~ x4 + x5 + x6 '
lv <- cfa(hs, data = HolzingerSwineford1939)
R
cat >SHOW.R <<'R'
fitMeasures(lv, c("npar", "logl", "aic", "bic", "ntotal"))
R
sample lavaan-fitmeasures txt rscript "lv ML"

# knitr: summaries of two glms in Markdown and in HTML.
cat >FITS.R <<'R'
m1 <- glm(count ~ spray, family = poisson, data = InsectSprays)
m0 <- glm(count ~ 1, family = poisson, data = InsectSprays)
R
cat >SHOW.R <<'R'
summary(m1)
summary(m0)
R
sample knitted-glms md knitr-md "m1 ML, m0 ML"
sample knitted-glms html knitr-html "m1 ML, m0 ML"
# The same page through R Markdown, a formula with > and & in it.
cat >FITS.R <<'R'
m1 <- glm(count ~ spray, family = poisson, data = InsectSprays)
m2 <- glm(count ~ I(as.integer(spray) > 3 & as.integer(spray) < 6), family = poisson, data = InsectSprays)
R
cat >SHOW.R <<'R'
summary(m1)
summary(m2)
R
sample rmarkdown-glms html knitr-markdown-html "m1 ML, m2 ML"

# Fits printed by print() alone, a file each: no summary or glm beside
# them to say whose output the file is. survreg's print() counts its
# scale apart from its coefficients: one estimated (weibull), none
# (exponential), one a stratum; an aliased coefficient, printed NA, counts
# in its logLik()'s df all the same.
cat >FITS.R <<'R'
suppressMessages({library(MASS); library(bbmle); library(glmmTMB); library(survival)})
pr <- polr(Sat ~ Infl + Type + Cont, weights = Freq, data = housing)
set.seed(1); d <- data.frame(y = rpois(40, 3), x = runif(40))
p2 <- mle2(y ~ dpois(lambda = exp(a + b * x)), start = list(a = 0, b = 0), data = d)
tm <- glmmTMB(count ~ mined + (1 | site), family = poisson, data = Salamanders)
sw <- survreg(Surv(futime, fustat) ~ ecog.ps + rx, data = ovarian, dist = "weibull")
se <- survreg(Surv(futime, fustat) ~ ecog.ps + rx, data = ovarian, dist = "exponential")
ss <- survreg(Surv(time, status) ~ age + strata(sex), data = lung)
sa <- survreg(Surv(futime, fustat) ~ ecog.ps + rx + I(2 * rx), data = ovarian)
R
for fit in pr p2 tm sw se ss sa; do
  echo "$fit" >SHOW.R
  case $fit in pr) name=polr ;; p2) name=mle2 ;; tm) name=glmmtmb ;; sw) name=survreg-weibull ;;
    se) name=survreg-exponential ;; ss) name=survreg-strata ;; sa) name=survreg-aliased ;; esac
  sample "print-alone-$name" txt rscript "$fit ML"
done

# A console 30 or 40 characters wide, as a narrow pane of an IDE sets it:
# R wraps lme4's and glmmTMB's table of criteria (df.resid on lines of its
# own), puts the formula under "Formula:" and the correlations of the
# random effects below their rows, or at 30 their variances in a block
# below their names.
cat >FITS.R <<'R'
suppressMessages({library(lme4); library(glmmTMB)})
f1 <- lmer(Reaction ~ Days + (Days | Subject), sleepstudy, REML = FALSE)
f2 <- lmer(Reaction ~ Days + (Days | Subject), sleepstudy)
tm <- glmmTMB(count ~ mined + (1 | site), family = poisson, data = Salamanders)
R
cat >SHOW.R <<'R'
options(width = 30)
summary(f1)
options(width = 40)
summary(f2)
summary(tm)
R
sample narrow-console txt rscript "f1 ML, f2 REML, tm ML"

# print() of a glm with an AIC over 10,000, which it shows to four
# significant digits ("18970" for 18965.62), beside summary() of another,
# which shows two decimals: the trailing zero is rounding, so the two are
# in an order that the printed digits cannot tell.
cat >FITS.R <<'R'
set.seed(2); n <- 5000; x <- rnorm(n); z <- rnorm(n); w <- rnorm(n)
y <- rpois(n, exp(1 + 0.3 * x + 0.01 * z))
m2 <- glm(y ~ x + z, family = poisson)
m4 <- glm(y ~ x + w, family = poisson)
R
cat >SHOW.R <<'R'
m2
summary(m4)
R
sample large-aic-print-and-summary txt rscript "m2 ML, m4 ML"

# lapply() over a named list of fits: R prints "$full" over each element,
# the summaries, then their log-likelihoods, which belong to the same two
# fits (no row of their own).
cat >FITS.R <<'R'
m1 <- glm(count ~ spray, family = poisson, data = InsectSprays)
m0 <- glm(count ~ 1, family = poisson, data = InsectSprays)
ms <- list(full = m1, null = m0)
R
cat >SHOW.R <<'R'
lapply(ms, summary)
lapply(ms, logLik)
R
sample lapply-named-fits txt rscript "m1 ML, m0 ML"

# statsmodels: OLS and the same model as a Gaussian GLM, a discrete
# negative binomial, MixedLM by REML and by ML, and summary2() layouts.
# K counts every estimated parameter: the variance of OLS and of the
# Gaussian GLM too, the negative binomial's alpha, a mixed model's
# variance parameters and scale.
py=/usr/bin/python3
"$py" - "$out" <<'PY'
import sys, warnings
import numpy as np
import statsmodels.api as sm
import statsmodels.formula.api as smf
warnings.simplefilter("ignore")
out = sys.argv[1]
def write(name, printed, fits):
    with open(f"{out}/{name}.txt", "w") as f:
        f.write(printed)
    with open(f"{out}/{name}.truth", "w") as f:
        f.write("kind\tlogLik\tk\tn\n")
        for kind, llf, k, n in fits:
            f.write(f"{kind}\t{llf!r}\t{k}\t{n}\n")
spector = sm.datasets.spector.load_pandas().data
ols = smf.ols("GRADE ~ GPA + TUCE + PSI", spector).fit()
glm = smf.glm("GRADE ~ GPA + TUCE + PSI", spector, family=sm.families.Gaussian()).fit()
write("statsmodels-ols-and-gaussian-glm", str(ols.summary()) + "\n\n" + str(glm.summary()) + "\n",
      [("ML", ols.llf, len(ols.params) + 1, int(ols.nobs)), ("ML", glm.llf, len(glm.params) + 1, int(glm.nobs))])
rng = np.random.default_rng(1)
x = rng.normal(size=300)
y = rng.negative_binomial(2, 1 / (1 + np.exp(0.5 + 0.4 * x) / 2))
nb = sm.NegativeBinomial(y, sm.add_constant(x)).fit(disp=0)
write("statsmodels-negative-binomial", str(nb.summary()) + "\n",
      [("ML", nb.llf, len(nb.params), int(nb.nobs))])
data = sm.datasets.get_rdataset("dietox", "geepack").data if False else None
g = np.repeat(np.arange(30), 8)
t = np.tile(np.arange(8), 30)
u = rng.normal(size=30)[g]
w = 10 + 2 * t + u * 3 + rng.normal(size=240)
import pandas as pd
frame = pd.DataFrame({"w": w, "t": t, "g": g})
reml = smf.mixedlm("w ~ t", frame, groups=frame["g"]).fit()
ml = smf.mixedlm("w ~ t", frame, groups=frame["g"]).fit(reml=False)
def mixed_k(r):
    return len(r.fe_params) + r.cov_re.shape[0] * (r.cov_re.shape[0] + 1) // 2 + 1
write("statsmodels-mixedlm", str(reml.summary()) + "\n\n" + str(ml.summary()) + "\n",
      [("REML", reml.llf, mixed_k(reml), int(reml.nobs)), ("ML", ml.llf, mixed_k(ml), int(ml.nobs))])
logit = smf.logit("GRADE ~ GPA + TUCE + PSI", spector).fit(disp=0)
write("statsmodels-summary2", str(ols.summary2()) + "\n\n" + str(logit.summary2()) + "\n",
      [("ML", ols.llf, len(ols.params) + 1, int(ols.nobs)), ("ML", logit.llf, len(logit.params), int(logit.nobs))])
PY

# summary2() of GLMs names no family: the scale it prints tells a Gaussian
# or Gamma GLM (estimated, a parameter) from a Poisson one (1). And an
# OrderedModel, whose summary is titled apart from the regressions', and a
# zero-inflated Poisson.
"$py" - "$out" <<'PY'
import sys, warnings
import numpy as np
import pandas as pd
import statsmodels.api as sm
import statsmodels.formula.api as smf
warnings.simplefilter("ignore")
out = sys.argv[1]
rng = np.random.default_rng(3)
frame = pd.DataFrame({"x": rng.normal(size=300)})
frame["y"] = 1 + 0.5 * frame.x + rng.normal(size=300)
frame["c"] = rng.poisson(np.exp(0.5 + 0.3 * frame.x))
fits = [smf.glm("y ~ x", frame).fit(),
        smf.glm("np.exp(y) ~ x", frame, family=sm.families.Gamma(sm.families.links.Log())).fit(),
        smf.glm("c ~ x", frame, family=sm.families.Poisson()).fit()]
scaled = [1, 1, 0]
with open(f"{out}/statsmodels-glm-summary2.txt", "w") as f:
    f.write("\n\n".join(str(r.summary2()) for r in fits) + "\n")
with open(f"{out}/statsmodels-glm-summary2.truth", "w") as f:
    f.write("kind\tlogLik\tk\tn\n")
    for r, extra in zip(fits, scaled):
        f.write(f"ML\t{r.llf!r}\t{len(r.params) + extra}\t{int(r.nobs)}\n")
from statsmodels.miscmodels.ordinal_model import OrderedModel
frame["o"] = pd.cut(frame.y, [-10, 0, 1, 2, 10], labels=False)
ordered = OrderedModel.from_formula("o ~ x", frame, distr="logit").fit(method="bfgs", disp=0)
with open(f"{out}/statsmodels-ordered.txt", "w") as f:
    f.write(str(ordered.summary()) + "\n")
with open(f"{out}/statsmodels-ordered.truth", "w") as f:
    f.write(f"kind\tlogLik\tk\tn\nML\t{ordered.llf!r}\t{len(ordered.params)}\t{int(ordered.nobs)}\n")
# A zero-inflated Poisson: its Df Residuals, and statsmodels' own AIC,
# leave out the inflation model's constant, a parameter all the same.
from statsmodels.discrete.count_model import ZeroInflatedPoisson
exog = sm.add_constant(frame[["x"]])
zip_ = ZeroInflatedPoisson(frame.c * (rng.random(300) > 0.2), exog, exog_infl=np.ones((300, 1))).fit(disp=0, maxiter=200)
with open(f"{out}/statsmodels-zero-inflated.txt", "w") as f:
    f.write(str(zip_.summary()) + "\n")
with open(f"{out}/statsmodels-zero-inflated.truth", "w") as f:
    f.write(f"kind\tlogLik\tk\tn\nML\t{zip_.llf!r}\t{len(zip_.params)}\t{int(zip_.nobs)}\n")
PY
echo "wrote $(ls "$out"/*.truth | wc -l) samples in $out"
