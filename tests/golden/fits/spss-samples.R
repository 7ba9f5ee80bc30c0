# Fits made in R and written as SPSS's viewer gives them as text: MIXED's
# Model Dimension and Information Criteria pasted (cells split by tabs) and
# exported (a cell to a line between bars, long labels broken), GENLIN's
# Goodness of Fit aligned with blanks and written with decimal commas. The
# criteria are worked out as SPSS does: under REML the AIC counts the
# covariance parameters only and n is n - p; the SPSS reader's every number
# is held to R's fits of the same data.
args <- commandArgs(trailingOnly = TRUE)
out <- if (length(args)) args[1] else "."
suppressMessages(library(lme4))

f3 <- function(x) formatC(x, digits = 3, format = "f")

mixed_criteria <- function(fit, reml) {
  n <- nobs(fit)
  p <- length(fixef(fit))
  q <- 2
  m2 <- if (reml) REMLcrit(fit) else -2 * as.numeric(logLik(fit))
  d <- if (reml) q else p + q
  effective <- if (reml) n - p else n
  list(m2 = m2, d = d, n = n, values = c(m2, m2 + 2 * d, m2 + 2 * d * effective / (effective - d - 1),
                                           m2 + d * (log(effective) + 1), m2 + d * log(effective)))
}
criteria_labels <- function(reml) c(if (reml) "-2 Restricted Log Likelihood" else "-2 Log Likelihood",
                                    "Akaike's Information Criterion (AIC)", "Hurvich and Tsai's Criterion (AICC)",
                                    "Bozdogan's Criterion (CAIC)", "Schwarz's Bayesian Criterion (BIC)")
dimension_rows <- list(c("Fixed Effects", "Intercept", "1", "", "1", ""), c("", "Days", "1", "", "1", ""),
                       c("Random Effects", "Intercept", "1", "Variance Components", "1", "Subject"),
                       c("Residual", "", "", "", "1", ""), c("Total", "", "3", "", "4", ""))
dimension_head <- c("", "", "Number of Levels", "Covariance Structure", "Number of Parameters", "Subject Variables")

# Pasted from the viewer: a row to a line, cells between tabs.
pasted <- function(fit, reml) {
  v <- mixed_criteria(fit, reml)
  c("Model Dimensiona", paste(dimension_head, collapse = "\t"),
    sapply(dimension_rows, paste, collapse = "\t"), "a. Dependent Variable: Reaction.", "",
    "Information Criteriaa", paste(criteria_labels(reml), f3(v$values), sep = "\t"),
    "The information criteria are displayed in smaller-is-better forms.", "a. Dependent Variable: Reaction.", "")
}
# Exported as text: a cell to a line, bars between, labels broken at 20.
exported <- function(fit, reml) {
  cell <- function(text) c(strwrap(text, 20), "|")
  v <- mixed_criteria(fit, reml)
  c("Model Dimension(a)", "|", unlist(lapply(c(dimension_head, unlist(dimension_rows)), function(x)
      if (nchar(x)) cell(x) else "|")), "a Dependent Variable: Reaction.", "",
    "Information Criteria(a)", "|", unlist(lapply(seq_along(v$values), function(i)
      c(cell(criteria_labels(reml)[i]), cell(f3(v$values[i]))))),
    "The information criteria are displayed in smaller-is-better forms.", "a Dependent Variable: Reaction.", "")
}

lines <- character()
expected <- data.frame()
add_mixed <- function(title, reml, layout) {
  fit <- lmer(Reaction ~ Days + (1 | Subject), sleepstudy, REML = reml)
  v <- mixed_criteria(fit, reml)
  syntax <- c(sprintf("TITLE '%s'.", title), "MIXED Reaction WITH Days",
              sprintf("  /METHOD=%s", if (reml) "REML" else "ML"), "  /FIXED=Days",
              "  /RANDOM=INTERCEPT | SUBJECT(Subject) COVTYPE(VC).", "")
  lines <<- c(lines, syntax, title, "", "Mixed Model Analysis", "")
  expected <<- rbind(expected, data.frame(model = title, line = length(lines) - 1, kind = if (reml) "REML" else "ML",
                                          logLik = -v$m2 / 2, k = v$d, n = v$n, aic = v$values[2],
                                          bic = v$values[5], tolerance = 5e-4))
  lines <<- c(lines, layout(fit, reml))
}
add_mixed("Sleep study REML", TRUE, pasted)
add_mixed("Sleep study ML", FALSE, exported)
writeLines(lines, file.path(out, "spss-mixed.txt"))
write.table(expected, file.path(out, "spss-mixed.expected"), sep = "\t", quote = FALSE, row.names = FALSE)

# GENLIN's Goodness of Fit, exported aligned with blanks, decimal commas.
fit <- glm(breaks ~ wool + tension, poisson, warpbreaks)
n <- nobs(fit)
k <- attr(logLik(fit), "df")
ll <- as.numeric(logLik(fit))
pearson <- sum(residuals(fit, "pearson")^2)
comma <- function(x) sub(".", ",", f3(x), fixed = TRUE)
goodness <- c(
  "Generalized Linear Models", "", "Goodness of Fita",
  sprintf("%-40s%12s%6s%12s", "", "Value", "df", "Value/df"),
  sprintf("%-40s%12s%6d%12s", c("Deviance", "Scaled Deviance", "Pearson Chi-Square", "Scaled Pearson Chi-Square"),
          comma(c(deviance(fit), deviance(fit), pearson, pearson)), df.residual(fit),
          c(comma(deviance(fit) / df.residual(fit)), "", comma(pearson / df.residual(fit)), "")),
  sprintf("%-40s%12s", c("Log Likelihoodb", "Akaike's Information Criterion (AIC)",
                         "Finite Sample Corrected AIC (AICC)", "Bayesian Information Criterion (BIC)",
                         "Consistent AIC (CAIC)"),
          comma(c(ll, AIC(fit), AIC(fit) + 2 * k * (k + 1) / (n - k - 1), BIC(fit), BIC(fit) + k))),
  "Dependent Variable: breaks", "Model: (Intercept), wool, tension",
  "a. Information criteria are in smaller-is-better form.",
  "b. The full log likelihood function is displayed and used in computing information criteria.", "")
writeLines(goodness, file.path(out, "spss-genlin.txt"))
write.table(data.frame(model = "spss-genlin", line = 1, kind = "ML", logLik = ll, k = k, n = n, aic = AIC(fit),
                       bic = BIC(fit), tolerance = 5e-4),
            file.path(out, "spss-genlin.expected"), sep = "\t", quote = FALSE, row.names = FALSE)
