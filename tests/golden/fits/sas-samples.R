# Fits made in R and printed as a SAS listing prints them: PROC LOGISTIC,
# GENMOD and MIXED (REML and ML) in one file, page headers and a page break
# inside a table, so that the SAS reader's every number can be held to R's
# logLik(), AIC() and BIC() of the same fits, worked out as SAS does.
args <- commandArgs(trailingOnly = TRUE)
out <- if (length(args)) args[1] else "."
suppressMessages(library(lme4))

width <- 100
centre <- function(text) paste0(strrep(" ", max(0, (width - nchar(text)) %/% 2)), text)
page_number <- 0
page <- function(titles, procedure) {
  page_number <<- page_number + 1
  first <- sprintf("%-84s%16s", centre(titles[1]), sprintf("09:30 Monday, March 4, 2024 %3d", page_number))
  c(paste0("\f", first), if (length(titles) > 1) centre(titles[-1]), "", centre(sprintf("The %s Procedure", procedure)), "")
}
table_rows <- function(labels, values, indent = 30) sprintf("%s%-28s%s", strrep(" ", indent), labels, values)
f <- function(x, d) formatC(x, digits = d, format = "f")

listing <- character()
expected <- data.frame()
add_fit <- function(titles, procedure, body, name, kind, logLik, k, n, aic, bic, tolerance) {
  header <- page(titles, procedure)
  line <- length(listing) + grep("Procedure$", header)[1]
  listing <<- c(listing, header, body)
  expected <<- rbind(expected, data.frame(model = name, line = line, kind = kind, logLik = logLik, k = k, n = n,
                                          aic = aic, bic = bic, tolerance = tolerance))
}

# A table of estimates as SAS prints one: the headings right-aligned over
# their columns, a CLASS variable's level beside it (R's woolB is SAS's
# "wool B"), the reference level printed with DF 0 and zeros; R's numbers.
estimates_table <- function(title, fit, classes = character(), mixed = FALSE) {
  s <- if (mixed) summary(fit)$coefficients else summary(fit)$coefficients
  parameter <- rownames(s)
  parameter[parameter == "(Intercept)"] <- "Intercept"
  level <- rep("", length(parameter))
  for (cl in classes) {
    at <- startsWith(parameter, cl)
    level[at] <- substring(parameter[at], nchar(cl) + 1)
    parameter[at] <- cl
  }
  if (mixed) {
    head <- c(sprintf("%5s%-14s%12s%12s", "", "", "", "Standard"),
              sprintf("%5s%-14s%12s%12s%8s%10s%10s", "", "Effect", "Estimate", "Error", "DF", "t Value", "Pr > |t|"))
    rows <- sprintf("%5s%-14s%12s%12s%8d%10s%10s", "", parameter, f(s[, 1], 4), f(s[, 2], 4), 17L, f(s[, 3], 2), "<.0001")
  } else {
    head <- c(sprintf("%5s%-20s%4s%12s%12s%13s", "", "", "", "", "Standard", "Wald"),
              sprintf("%5s%-10s%-10s%4s%12s%12s%13s%13s", "", "Parameter", "", "DF", "Estimate", "Error", "Chi-Square",
                      "Pr > ChiSq"))
    row <- function(p, l, df, e, se, chi, pv) sprintf("%5s%-10s%-10s%4s%12s%12s%13s%13s", "", p, l, df, e, se, chi, pv)
    rows <- row(parameter, level, "1", f(s[, 1], 4), f(s[, 2], 4), f((s[, 1] / s[, 2])^2, 4), f(s[, 4], 4))
    for (cl in classes) {
      reference <- levels(model.frame(fit)[[cl]])[1]
      rows <- c(rows, row(cl, reference, "0", f(0, 4), f(0, 4), ".", "."))
    }
  }
  c(centre(title), "", head, "", rows, "")
}

logistic_body <- function(fit) {
  null <- update(fit, . ~ 1)
  n <- nobs(fit)
  m2 <- c(-2 * as.numeric(logLik(null)), -2 * as.numeric(logLik(fit)))
  k <- c(1, attr(logLik(fit), "df"))
  c(centre("Model Information"), "",
    table_rows(c("Data Set", "Response Variable", "Number of Response Levels", "Model"),
               c("WORK.MTCARS", "am", "2", "binary logit")), "",
    table_rows(c("Number of Observations Read", "Number of Observations Used"), c(n, n)), "",
    centre("Model Convergence Status"), "", centre("Convergence criterion (GCONV=1E-8) satisfied."), "",
    centre("Model Fit Statistics"), "",
    sprintf("%48s%15s", "", "Intercept"), sprintf("%38s%10s%15s", "", "Intercept", "and"),
    sprintf("%28s%-10s%10s%15s", "", "Criterion", "Only", "Covariates"), "",
    sprintf("%28s%-10s%10s%15s", "", c("AIC", "SC", "-2 Log L"),
            f(c(m2[1] + 2, m2[1] + log(n), m2[1]), 3), f(c(m2[2] + 2 * k[2], m2[2] + k[2] * log(n), m2[2]), 3)),
    "", estimates_table("Analysis of Maximum Likelihood Estimates", fit))
}

genmod_body <- function(fit) {
  n <- nobs(fit)
  k <- attr(logLik(fit), "df")
  mu <- fitted(fit)
  y <- fit$y
  pearson <- sum(residuals(fit, "pearson")^2)
  aic <- AIC(fit)
  rows <- c(sprintf("%13s%-28s%4d%16s%16s", "", c("Deviance", "Scaled Deviance", "Pearson Chi-Square", "Scaled Pearson X2"),
                    df.residual(fit), f(c(deviance(fit), deviance(fit), pearson, pearson), 4),
                    f(c(deviance(fit), deviance(fit), pearson, pearson) / df.residual(fit), 4)),
            sprintf("%13s%-32s%16s", "", c("Log Likelihood", "Full Log Likelihood", "AIC (smaller is better)",
                                            "AICC (smaller is better)", "BIC (smaller is better)"),
                    f(c(sum(y * log(mu) - mu), logLik(fit), aic, aic + 2 * k * (k + 1) / (n - k - 1), BIC(fit)), 4)))
  c(centre("Model Information"), "",
    table_rows(c("Data Set", "Distribution", "Link Function", "Dependent Variable"),
               c("WORK.WARPBREAKS", "Poisson", "Log", "breaks")), "",
    table_rows(c("Number of Observations Read", "Number of Observations Used"), c(n, n)), "",
    centre("Criteria For Assessing Goodness Of Fit"), "",
    sprintf("%13s%-28s%4s%16s%16s", "", "Criterion", "DF", "Value", "Value/DF"), "", rows, "",
    centre("Algorithm converged."), "",
    estimates_table("Analysis Of Maximum Likelihood Parameter Estimates", fit, c("wool", "tension")))
}

# MIXED's REML AIC counts the covariance parameters only, its BIC the log of
# the subjects; with ML both count every parameter.
mixed_parts <- function(fit, reml) {
  n <- nobs(fit)
  subjects <- length(unique(sleepstudy$Subject))
  p <- length(fixef(fit))
  q <- 2
  m2 <- if (reml) REMLcrit(fit) else -2 * as.numeric(logLik(fit))
  k <- if (reml) q else p + q
  effective <- if (reml) n - p else n
  aic <- m2 + 2 * k
  list(m2 = m2, k = k, aic = aic, aicc = m2 + 2 * k * effective / (effective - k - 1),
       bic = m2 + k * log(subjects), n = n, subjects = subjects, p = p, q = q)
}
mixed_top <- function(fit, reml) {
  v <- mixed_parts(fit, reml)
  c(centre("Model Information"), "",
    table_rows(c("Data Set", "Dependent Variable", "Covariance Structure", "Subject Effect", "Estimation Method"),
               c("WORK.SLEEPSTUDY", "Reaction", "Variance Components", "Subject", if (reml) "REML" else "ML")), "",
    centre("Dimensions"), "",
    table_rows(c("Covariance Parameters", "Columns in X", "Columns in Z Per Subject", "Subjects",
                 "Max Obs Per Subject"), c(v$q, v$p, 1, v$subjects, 10)), "",
    centre("Number of Observations"), "",
    table_rows(c("Number of Observations Read", "Number of Observations Used", "Number of Observations Not Used"),
               c(v$n, v$n, 0)), "",
    centre("Convergence criteria met."), "",
    centre("Covariance Parameter Estimates"), "", table_rows(c("Cov Parm", "Intercept", "Residual"),
    c("Estimate", f(as.data.frame(VarCorr(fit))$vcov, 2))), "")
}
mixed_statistics <- function(fit, reml) {
  v <- mixed_parts(fit, reml)
  table_rows(c(if (reml) "-2 Res Log Likelihood" else "-2 Log Likelihood", "AIC (Smaller is Better)",
               "AICC (Smaller is Better)", "BIC (Smaller is Better)"), f(c(v$m2, v$aic, v$aicc, v$bic), 1))
}

both <- glm(am ~ wt + hp, binomial, mtcars)
add_fit("Logit: weight and horsepower", "LOGISTIC", logistic_body(both), "Logit: weight and horsepower", "ML",
        as.numeric(logLik(both)), 3, 32, AIC(both), BIC(both), 5e-4)

wool_tension <- glm(breaks ~ wool + tension, poisson, warpbreaks)
add_fit("Poisson: warp breaks", "GENMOD", genmod_body(wool_tension), "Poisson: warp breaks", "ML",
        as.numeric(logLik(wool_tension)), 4, 54, AIC(wool_tension), BIC(wool_tension), 5e-5)

# The REML fit's Fit Statistics table is broken by a page end after its AIC.
reml <- lmer(Reaction ~ Days + (1 | Subject), sleepstudy, REML = TRUE)
v <- mixed_parts(reml, TRUE)
titles <- c("Sleep study", "Random intercepts, REML")
statistics <- mixed_statistics(reml, TRUE)
add_fit(titles, "Mixed", c(mixed_top(reml, TRUE), centre("Fit Statistics"), "", statistics[1:2],
                           page(titles, "Mixed"), statistics[3:4], ""),
        "Sleep study: Random intercepts, REML", "REML", -v$m2 / 2, v$k, v$n, v$aic, v$bic, 0.05)
ml <- lmer(Reaction ~ Days + (1 | Subject), sleepstudy, REML = FALSE)
v <- mixed_parts(ml, FALSE)
add_fit(c("Sleep study", "Random intercepts, ML"), "Mixed",
        c(mixed_top(ml, FALSE), centre("Fit Statistics"), "", mixed_statistics(ml, FALSE), "",
          estimates_table("Solution for Fixed Effects", ml, mixed = TRUE)),
        "Sleep study: Random intercepts, ML", "ML", -v$m2 / 2, v$k, v$n, v$aic, v$bic, 0.05)

# Two fits under SAS's default title: the file's name, told apart by procedure.
weight <- glm(am ~ wt, binomial, mtcars)
add_fit("The SAS System", "LOGISTIC", logistic_body(weight), "sas-listing (LOGISTIC)", "ML",
        as.numeric(logLik(weight)), 2, 32, AIC(weight), BIC(weight), 5e-4)
tension <- glm(breaks ~ tension, poisson, warpbreaks)
add_fit("The SAS System", "GENMOD", genmod_body(tension), "sas-listing (GENMOD)", "ML",
        as.numeric(logLik(tension)), 3, 54, AIC(tension), BIC(tension), 5e-5)

writeLines(listing, file.path(out, "sas-listing.lst"))
write.table(expected, file.path(out, "sas-listing.expected"), sep = "\t", quote = FALSE, row.names = FALSE)

# The same listing pasted into documents, where its form feeds are lost:
# into Markdown between ``` fences, prose around it, and into a Quarto
# report under a list item, every line indented, in a ```{.text} block
# with knitr's "## " before each, as SAS lists under NODATE NONUMBER (no
# date and page to tell a page's first title by). Line for line the
# listing's, after the lines above the block; the names and numbers as the
# listing's.
paste_into <- function(file, above, lines, below) {
  writeLines(c(above, lines, below), file.path(out, file))
  shifted <- expected
  shifted$line <- shifted$line + length(above)
  write.table(shifted, file.path(out, paste0(sub("\\.", "-", file), ".expected")), sep = "\t", quote = FALSE,
              row.names = FALSE)
}
unfed <- sub("^\f", "", listing)
paste_into("sas-listing.md",
           c("# Which model?", "", "The six fits as SAS 9.4 listed them, pasted from the output window:", "", "```"),
           unfed, c("```", "", "The logit with weight and horsepower has the lowest AIC of its response."))
paste_into("sas-listing.qmd",
           c("---", "title: \"Model comparison\"", "format: html", "---", "", "1. The fits, from `sas-listing.lst`:",
             "", "   ```{.text}"),
           ifelse(unfed == "", "   ##", paste0("   ## ", sub(" +09:30 Monday, March 4, 2024 +[0-9]+$", "", unfed))),
           c("   ```", "", "2. The comparison."))

# Two sets to average, each of one procedure: their tables of estimates
# give the terms, a CLASS level named beside its variable.
for (set in list(list("sas-logistic.lst", "LOGISTIC", logistic_body, list(both, weight)),
                 list("sas-genmod.lst", "GENMOD", genmod_body, list(wool_tension, tension)))) {
  listing <- character()
  for (fit in set[[4]]) add_fit("The SAS System", set[[2]], set[[3]](fit), "", "ML", 0, 0, 0, 0, 0, 0)
  writeLines(listing, file.path(out, set[[1]]))
}

# GENMOD with REPEATED: the criteria it prints are the independence model's,
# and the reader must refuse to rank a GEE by them.
listing <- character()
gee <- c(genmod_body(wool_tension), centre("GEE Model Information"), "",
         table_rows(c("Correlation Structure", "Subject Effect"), c("Exchangeable", "loom (9 levels)")), "")
add_fit("Poisson GEE: warp breaks by loom", "GENMOD", gee, "", "ML", 0, 0, 0, 0, 0, 0)
writeLines(listing, file.path(out, "sas-gee.lst"))
