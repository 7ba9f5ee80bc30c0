# Logistic regressions fitted in R and printed as Stata's text log prints
# them, estimation output, `estat ic` and `estimates stats` tables and all,
# so that the Stata reader's every number can be held to R's logLik(),
# AIC() and BIC() of the same fits.
args <- commandArgs(trailingOnly = TRUE)
out <- if (length(args)) args[1] else "."

# Stata's %10.0g: seven significant digits, no zero before the point.
g <- function(x) sub("^(-?)0\\.", "\\1.", formatC(x, digits = 7, format = "g"))
grouped <- function(n) formatC(n, format = "d", big.mark = ",")
pad <- function(text, width) formatC(text, width = width)
# A name as Stata's tables shorten it: the first ten letters, "~", the last.
abbreviated <- function(name) if (nchar(name) <= 12) name else
  paste0(substr(name, 1, 10), "~", substr(name, nchar(name), nchar(name)))
# Half a unit of the last digit printed, for the largest printed number.
printed_tolerance <- function(...) max(sapply(c(...), function(x) 0.5 * 10^(floor(log10(abs(x))) - 6)))

logit_block <- function(command, fit, robust, new_style) {
  null <- update(fit, . ~ 1)
  n <- nobs(fit)
  ll <- as.numeric(logLik(fit))
  word <- if (robust) "log pseudolikelihood" else "log likelihood"
  se <- sqrt(diag(vcov(fit)))
  if (robust) se <- sqrt(diag(sandwich::sandwich(fit))) * sqrt(n / (n - 1))
  z <- coef(fit) / se
  terms <- sub("\\(Intercept\\)", "_cons", names(coef(fit)))
  terms <- c(terms[-1], terms[1])
  order <- c(seq_along(coef(fit))[-1], 1)
  obs <- if (new_style) grouped(n) else as.character(n)
  test <- if (robust) sprintf("Wald chi2(%d)", length(coef(fit)) - 1) else
    sprintf("LR chi2(%d)", length(coef(fit)) - 1)
  statistic <- if (robust) sum(z[-1]^2) else 2 * (ll - as.numeric(logLik(null)))
  c(paste(".", command), "",
    sprintf("Iteration 0:   %s = %s", word, formatC(as.numeric(logLik(null)), digits = 8, format = "g")),
    sprintf("Iteration %d:   %s = %s", fit$iter, word, formatC(ll, digits = 8, format = "g")), "",
    sprintf("%-56s%-14s= %6s", "Logistic regression", "Number of obs", obs),
    sprintf("%56s%-14s= %6.2f", "", test, statistic),
    sprintf("%56s%-14s= %6.4f", "", "Prob > chi2", pchisq(statistic, length(coef(fit)) - 1, lower.tail = FALSE)),
    sprintf("%-56s%-14s= %6.4f",
            sprintf("Log %s = %s", sub("log ", "", word), formatC(ll, digits = 8, format = "g")),
            "Pseudo R2", 1 - ll / as.numeric(logLik(null))),
    "",
    strrep("-", 78),
    if (robust) sprintf("%13s|%24s", "", "Robust"),
    sprintf("%12s | Coefficient  Std. err.      z    P>|z|     [95%% conf. interval]",
            all.vars(formula(fit))[1]),
    paste0(strrep("-", 13), "+", strrep("-", 64)),
    sprintf("%12s | %10s %10s %8.2f %7.3f %12s %11s", terms, g(coef(fit)[order]), g(se[order]), z[order],
            2 * pnorm(-abs(z[order])), g(coef(fit)[order] - 1.959964 * se[order]),
            g(coef(fit)[order] + 1.959964 * se[order])),
    strrep("-", 78), "")
}

ic_table <- function(command, names, fits, new_style) {
  rule <- strrep("-", 77)
  rows <- mapply(function(name, fit) {
    null <- update(fit, . ~ 1)
    n <- nobs(fit)
    sprintf("%12s | %10s %10s %10s %7d %10s %10s", abbreviated(name), if (new_style) grouped(n) else n,
            g(as.numeric(logLik(null))), g(as.numeric(logLik(fit))), attr(logLik(fit), "df"),
            g(AIC(fit)), g(BIC(fit)))
  }, names, fits)
  header <- if (new_style) "       Model |          N   ll(null)  ll(model)      df        AIC        BIC" else
    "       Model |        Obs  ll(null)  ll(model)      df        AIC        BIC"
  note <- if (new_style) "Note: BIC uses N = number of observations. See [R] BIC note." else
    "               Note: N=Obs used in calculating BIC; see [R] BIC note."
  c(paste(".", command), "", "Akaike's information criterion and Bayesian information criterion", "",
    rule, header, paste0(strrep("-", 13), "+", strrep("-", 63)), rows, rule, note, "")
}

expected_row <- function(name, line, fit) {
  data.frame(model = name, line = line, kind = "ML", logLik = as.numeric(logLik(fit)),
             k = attr(logLik(fit), "df"), n = nobs(fit), aic = AIC(fit), bic = BIC(fit),
             tolerance = printed_tolerance(logLik(fit), AIC(fit), BIC(fit)))
}

write_sample <- function(file, text) writeLines(text, file.path(out, file))
write_expected <- function(file, table) {
  write.table(table, file.path(out, file), sep = "\t", quote = FALSE, row.names = FALSE)
}

# Stata 13's layout (Obs, the old note): three fits stored under names, one
# too long for the table, estat ic after the first and estimates stats at
# the end, so that the first model is listed twice.
fits <- list(weight = glm(am ~ wt, binomial, mtcars),
             weight_and_horsepower = glm(am ~ wt + hp, binomial, mtcars),
             horsepower = glm(am ~ hp, binomial, mtcars))
commands <- c(weight = "logit am wt", weight_and_horsepower = "logit am wt hp", horsepower = "logit am hp")
log <- c("  name:  <unnamed>", "       log:  cars.log", "  log type:  text", "", ". sysuse mtcars, clear", "")
expected <- data.frame()
for (name in names(fits)) {
  expected <- rbind(expected, expected_row(name, length(log) + 1, fits[[name]]))
  log <- c(log, logit_block(commands[[name]], fits[[name]], FALSE, FALSE))
  if (name == "weight") log <- c(log, ic_table("estat ic", ".", fits["weight"], FALSE))
  log <- c(log, paste(". estimates store", name), "")
}
log <- c(log, ic_table(paste("estimates stats", paste(names(fits), collapse = " ")), names(fits), fits, FALSE))
write_sample("stata-logit.log", log)
write_expected("stata-logit.expected", expected)

# Stata 17's layout (N with thousands separators), translated at a line size
# of 60: every longer line goes on after "> ", numbers broken where the line
# ends. Neither fit is stored, so both take the file's name.
diamonds <- as.data.frame(ggplot2::diamonds)
diamonds$expensive <- as.integer(diamonds$price > 5000)
fits <- list(glm(expensive ~ carat, binomial, diamonds), glm(expensive ~ carat + depth, binomial, diamonds))
commands <- c("logit expensive carat", "logit expensive carat depth")
log <- c(". use diamonds, clear", "")
expected <- data.frame()
for (i in seq_along(fits)) {
  expected <- rbind(expected, expected_row(sprintf("stata-diamonds (%d)", i),
                                           length(log) + 1, fits[[i]]))
  log <- c(log, logit_block(commands[i], fits[[i]], FALSE, TRUE), ic_table("estat ic", ".", fits[i], TRUE))
}
wrap <- function(line, width = 60) {
  if (nchar(line) <= width) return(line)
  rest <- substring(line, width + 1)
  c(substr(line, 1, width), paste0("> ", substring(rest, seq(1, nchar(rest), width - 2),
                                                     pmin(nchar(rest), seq(width - 2, nchar(rest) + width - 3,
                                                                           width - 2)))))
}
wrapped <- character()
lines_before <- integer()
for (line in log) {
  lines_before <- c(lines_before, length(wrapped) + 1)
  wrapped <- c(wrapped, wrap(line))
}
expected$line <- lines_before[expected$line]
write_sample("stata-diamonds.log", wrapped)
write_expected("stata-diamonds.expected", expected)

# vce(robust): Stata calls the likelihood a pseudolikelihood, and the reader
# must refuse to rank it.
robust <- glm(am ~ wt + hp, binomial, mtcars)
write_sample("stata-robust.log", c(logit_block("logit am wt hp, vce(robust)", robust, TRUE, TRUE),
                                   ic_table("estat ic", ".", list(robust), TRUE)))

# regress: Stata's AIC counts the coefficients and leaves out the residual
# variance that R's counts (K is R's count, the AIC Stata's as printed);
# `estat ic, all` adds AICc and CAIC columns.
ols <- lm(mpg ~ wt, mtcars)
n <- nobs(ols)
df <- length(coef(ols))
ll <- as.numeric(logLik(ols))
null <- as.numeric(logLik(lm(mpg ~ 1, mtcars)))
anova_rows <- anova(ols)
ss_model <- anova_rows["wt", "Sum Sq"]
ss_residual <- anova_rows["Residuals", "Sum Sq"]
se <- sqrt(diag(vcov(ols)))
stata_aic <- -2 * ll + 2 * df
stata_bic <- -2 * ll + df * log(n)
log <- c(". regress mpg wt", "",
         sprintf("%12s |%12s %10s %10s   Number of obs   = %8d", "Source", "SS", "df", "MS", n),
         sprintf("-------------+----------------------------------   F(1, %d)        = %8.2f", n - 2,
                 ss_model / (ss_residual / (n - 2))),
         sprintf("%12s | %11s %10d %10s   R-squared       = %8.4f", "Model", g(ss_model), 1, g(ss_model),
                 summary(ols)$r.squared),
         sprintf("%12s | %11s %10d %10s   Root MSE        = %8.4f", "Residual", g(ss_residual), n - 2,
                 g(ss_residual / (n - 2)), summary(ols)$sigma), "",
         strrep("-", 78),
         sprintf("%12s | Coefficient  Std. err.      t    P>|t|     [95%% conf. interval]", "mpg"),
         paste0(strrep("-", 13), "+", strrep("-", 64)),
         sprintf("%12s | %10s %10s %8.2f %7.3f", c("wt", "_cons"), g(coef(ols)[c(2, 1)]), g(se[c(2, 1)]),
                 (coef(ols) / se)[c(2, 1)], 2 * pt(-abs(coef(ols) / se), n - 2)[c(2, 1)]),
         strrep("-", 78), "", ". estat ic, all", "",
         "Akaike's, Bayesian, corrected Akaike's, and consistent Akaike's information criteria", "",
         strrep("-", 99),
         "       Model |          N   ll(null)  ll(model)      df        AIC        BIC       AICc       CAIC",
         paste0(strrep("-", 13), "+", strrep("-", 85)),
         sprintf("%12s | %10d %10s %10s %7d %10s %10s %10s %10s", ".", n, g(null), g(ll), df, g(stata_aic),
                 g(stata_bic), g(stata_aic + 2 * df * (df + 1) / (n - df - 1)), g(-2 * ll + df * (log(n) + 1))),
         strrep("-", 99), "Note: BIC, AICc, and CAIC use N = number of observations. See [R] IC note.")
write_sample("stata-regress.log", log)
write_expected("stata-regress.expected",
               data.frame(model = "stata-regress", line = 1, kind = "ML", logLik = ll,
                          k = attr(logLik(ols), "df"), n = n,
                          aic = stata_aic, bic = stata_bic, tolerance = printed_tolerance(ll, stata_aic, stata_bic)))
