#include "selection/fits/output_readers.hpp"
#include "tools/exit_status.hpp"
#include "tools/fits_command.hpp"
#include "tools/option_table.hpp"

namespace drav::cli {

std::string FitsHelp() {
  return R"(Usage: drav-report fits [OPTIONS] FILE...
       drav-report table --fits [OPTIONS] FILE...
       drav-report importance --fits [OPTIONS] FILE...
       drav-report average --fits (--all | --estimate TERM) [OPTIONS] FILE...

fits reads what statistics programs printed, one file or more (- is
standard input; a quoted pattern such as 'runs/*.out' is expanded), each
holding one fitted model or several, and lists every model found: its
name, source file and line, program, log-likelihood, K, n, the AIC and BIC
as the program printed them, the kind of likelihood and what is amiss.
table --fits ranks the same models as drav-report table ranks a table's,
with its options (--criterion, --level, --top, --delta-max, --format, ...).
importance --fits and average --fits take each model's terms from the
coefficient table printed with it (R's summary() of glm, glm.nb, lme4,
nlme and glmmTMB, statsmodels' summary() and summary2(), lavaan's
estimates as lhs op rhs, Mplus's MODEL RESULTS, Stata's and SAS's tables
of estimates, MARK's betas), named as the program names them; a term printed
NA is not held, one without an SE is averaged without one, and fits of two
programs need --term-names TFILE: a line a name, _cons = (Intercept).

A model's name is the output's own: an R formula, an Mplus TITLE, a MARK
model's braces, a Stata stored name, a SAS or SPSS TITLE; else the file's
name without its extension, numbered where a file holds several.

What each program must print; the programs are tried in this order:
)" + selection::fits::KnownPrograms() + R"(.
  Mplus        the .out file. K is "Number of Free Parameters", logLik the
               "H0 Value" (unscaled also under MLR, as Mplus's AIC is), n
               "Number of observations" or the groups' "Total sample size".
               TECH11/TECH14 values belong to other models and are not read.
               WLSMV, BAYES, imputation averages and runs that did not
               terminate normally have no likelihood: refused, saying why.
  lavaan       summary(fit, fit.measures = TRUE). K = model (free)
               parameters less equality constraints; n = observations used,
               groups added up; of a robust run's two columns the first.
               Or fitMeasures(fit, c("npar", "logl", "aic", "bic",
               "ntotal")) as R prints it, names over values: npar and logl
               at the least, K = npar, n = ntotal; after the same fit's
               summary it is that model, not another. The "Loglikelihood
               and Information Criteria" section pasted alone: K the free
               parameters release 0.5 prints in it, else AIC/2 + logLik.
  statsmodels  print(results.summary()) or summary2(), also inside a
               notebook (.ipynb). K = No. Observations - Df Residuals (Df
               Model leaves out the constant), + 1 for the variance of OLS,
               WLS and GLS, whose printed AIC leaves it out (2 below R's),
               + 1 for the scale of a Gaussian, Gamma or inverse Gaussian
               GLM (summary2(), naming no family: where its Scale is not
               1), + 1 for the alpha of NegativeBinomial and
               GeneralizedPoisson; OrderedModel's thresholds are in its Df
               Residuals already; a zero-inflated model's K is the rows of
               its coefficient table. MixedLM: K = the rows of its
               coefficient table (fixed effects, random-effects variances
               and covariances) + 1 for the scale, REML or ML as its Method
               says. Log-likelihoods come to 5 significant digits; models
               without an AIC get it from them. GEE has no likelihood.
  MARK         the output file of a run, any number of models. logLik =
               -2logL / -2, printed without the multinomial constants (kind
               "constants dropped": it ranks only beside MARK fits of the
               same histories); K = "Number of Estimated Parameters", n =
               "Effective Sample Size". Warned of: fewer parameters counted
               than the design has, MARK's gap and threshold counts apart,
               a printed AICc not its own. An aborted run (an ERROR, a
               model never estimated, no closing "proc stop") is refused.
  Stata        a text log (log using FILE, text; translate turns SMCL into
               text) with estat ic or estimates stats tables: logLik =
               ll(model), K = df, n = N or Obs, named by estimates store
               (shortened names such as weight_and~r expanded from it);
               lines wrapped with "> " joined. After regress K = df + 1, the
               residual variance its df and AIC leave out. A log
               pseudolikelihood (vce(robust), cluster, pweights) is listed
               and refused when ranked; a restricted likelihood is REML. A
               table is the last estimation command's (arima as any),
               shown or quietly, never a postestimation command's (margins,
               dfuller). SPost's fitstat, SPost 9's and 13's layouts: K as
               Stata's df; Current is the fit in memory, Saved an earlier
               one, Difference no model.
  SAS          a listing (or one pasted into Markdown or Quarto, fenced,
               indented or behind ##) of LOGISTIC (the model's column),
               GENMOD (the Full Log Likelihood, not its kernel), MIXED,
               GLIMMIX and NLMIXED fit statistics, any number of
               procedures and BY groups. K = (AIC - -2 log L) / 2, n =
               Number of Observations Used; named by the page's TITLEs.
               REML's AIC counts the covariance parameters only. A GEE,
               GLIMMIX's pseudo-likelihood and SURVEYLOGISTIC are listed
               and refused when ranked.
  SPSS         the Output Viewer's text (File > Export, Text - Plain; or
               tables pasted): MIXED's Information Criteria and Model
               Dimension, GENLIN's Goodness of Fit. K = (AIC - -2LL) / 2;
               n from the BIC (n - p under REML, the fixed effects added
               back); decimal commas read. A .spv file is refused, saying
               how to export text.
  R            summary() or print() of glm and glm.nb: n = residual df +
               coefficients, K = coefficients (aliased ones not), + 1 for
               the dispersion of gaussian, Gamma and inverse.gaussian, + 1
               for glm.nb's theta, logLik = K - AIC/2 (rows deleted for
               missingness are not in n; quasi families have no
               likelihood). summary() or print() of lmer/glmer (lmerTest's
               too): K = n - df.resid; a REML fit gives its REML criterion,
               K counted from its effects, and is never ranked beside ML
               fits. anova() of several fits: npar and logLik of each row.
               logLik(): K from df, n from --n; REML where the call asks
               for it (REML = TRUE). AIC(m1, m2, ...): K = df, logLik = K
               - AIC/2. glmmTMB as lme4. nlme's lme and gls: "fit by REML"
               or "maximum likelihood", K = AIC/2 + logLik (a gls print:
               its coefficients + 1). ordinal's clm and clmm: logLik, AIC
               and nobs of their table. Any summary ending "Log-likelihood:
               X on K Df" (pscl, AER's tobit); survreg (K = its rows of
               values, the log scale among them; print(): coefficients +
               scales), polr (logLik = -Residual Deviance/2) and bbmle's
               mle2 ("-2 log L:", print()'s "Log-likelihood:"); a print()
               with no likelihood (zeroinfl, tobit) is refused by name.
               summary() of lm: logLik from its residual standard error,
               K = coefficients + 1. coxph: a partial likelihood, K the df
               of its likelihood ratio test, n its events, logLik from
               logLik() printed after it. broom's glance() where its digits
               fix K = AIC/2 + logLik (a tibble's three do not: refused,
               saying how to print it in full). Each output is read up to
               the next call printed or command typed, never into the next.
               Console prompts, [1], knitr's "## ", Rscript's plain output
               and sink() files all read.

Where K, n or logLik are derived, --verbose shows how (a column in fits, a
note per model in table --fits).

Never a wrong ranking without a word: models of different kinds of
likelihood (ML, REML, pseudo, constants dropped, scaled, partial) or
different n, or from programs whose AICs count parameters differently, are
warned of with both models named (refused under --strict); REML or a Cox
model's partial likelihood beside another kind, and a model without a
likelihood or with a pseudolikelihood, are refused, and so is a model that
a table's row would be refused for (K negative or not whole, n not
positive, n <= K + 1 for AICc, a criterion too large). A printed AIC
that disagrees with logLik and K is warned of, and two models whose
criteria differ by less than the printed digits can tell are noted.

Options:
)" + OptionsHelp(kFits) + R"(
Example: drav-report table --fits --criterion aic runs/*.out

)" + ExitStatusHelp();
}

}  // namespace drav::cli
