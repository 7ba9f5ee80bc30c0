# Regressions fitted in R and printed as Stata's text log prints them,
# estimation output, `estat ic` and `estimates stats` tables and all,
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
regress_block <- function(command, ols) {
  n <- nobs(ols)
  anova_rows <- anova(ols)
  ss_model <- sum(anova_rows[-nrow(anova_rows), "Sum Sq"])
  ss_residual <- anova_rows["Residuals", "Sum Sq"]
  df_model <- length(coef(ols)) - 1
  se <- sqrt(diag(vcov(ols)))
  order <- c(seq_along(coef(ols))[-1], 1)
  terms <- sub("\\(Intercept\\)", "_cons", names(coef(ols)))[order]
  c(paste(".", command), "",
    sprintf("%12s |%12s %10s %10s   Number of obs   = %8d", "Source", "SS", "df", "MS", n),
    sprintf("-------------+----------------------------------   F(%d, %d)        = %8.2f", df_model, n - df_model - 1,
            (ss_model / df_model) / (ss_residual / (n - df_model - 1))),
    sprintf("%12s | %11s %10d %10s   R-squared       = %8.4f", "Model", g(ss_model), df_model,
            g(ss_model / df_model), summary(ols)$r.squared),
    sprintf("%12s | %11s %10d %10s   Root MSE        = %8.4f", "Residual", g(ss_residual), n - df_model - 1,
            g(ss_residual / (n - df_model - 1)), summary(ols)$sigma), "",
    strrep("-", 78),
    sprintf("%12s | Coefficient  Std. err.      t    P>|t|     [95%% conf. interval]", all.vars(formula(ols))[1]),
    paste0(strrep("-", 13), "+", strrep("-", 64)),
    sprintf("%12s | %10s %10s %8.2f %7.3f", terms, g(coef(ols)[order]), g(se[order]),
            (coef(ols) / se)[order], 2 * pt(-abs(coef(ols) / se), n - df_model - 1)[order]),
    strrep("-", 78), "")
}

ols <- lm(mpg ~ wt, mtcars)
n <- nobs(ols)
df <- length(coef(ols))
ll <- as.numeric(logLik(ols))
null <- as.numeric(logLik(lm(mpg ~ 1, mtcars)))
stata_aic <- -2 * ll + 2 * df
stata_bic <- -2 * ll + df * log(n)
log <- c(regress_block("regress mpg wt", ols), ". estat ic, all", "",
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

# Stata 17's arima and estat ic, three fits of Lake Huron's level by exact
# maximum likelihood (R's arima() by "ML" maximises the same Kalman filter
# likelihood; Stata's df counts the constant, the ARMA terms and sigma, as
# R's counts sigma^2). Between the second fit and its estat ic, a test of
# its residuals that prints a header of its own; the third fit is quietly,
# its output hidden. Each table belongs to the fit in memory, never to the
# one before; estimates stats lists all three by their stored names.
header_line <- function(left, label, value) sprintf("%-48s%-18s= %10s", left, label, value)
arima_block <- function(command, fit, order) {
  n <- nobs(fit)
  ll <- as.numeric(logLik(fit))
  start <- arima(LakeHuron, order = order, method = "CSS")
  ll0 <- arima(LakeHuron, order = order, method = "ML", fixed = coef(start), transform.pars = FALSE)$loglik
  arma <- names(coef(fit)) != "intercept"
  b <- coef(fit)[arma]
  wald <- as.numeric(t(b) %*% solve(fit$var.coef[arma, arma]) %*% b)
  se <- sqrt(diag(fit$var.coef))
  sigma <- sqrt(fit$sigma2)
  coefficient <- function(term, est, s) {
    z <- est / s
    sprintf("%12s | %10s %10s %8.2f %7.3f %12s %11s", term, g(est), g(s), z, 2 * pnorm(-abs(z)),
            g(est - 1.959964 * s), g(est + 1.959964 * s))
  }
  arma_rows <- character()
  for (part in c("ar", "ma")) {
    terms <- grep(paste0("^", part), names(coef(fit)), value = TRUE)
    if (length(terms) == 0) next
    if (length(arma_rows)) arma_rows <- c(arma_rows, sprintf("%12s |", ""))
    arma_rows <- c(arma_rows, sprintf("%12s |", part),
                   mapply(function(t, i) coefficient(sprintf("L%d.", i), coef(fit)[t], se[t]), terms, seq_along(terms)))
  }
  c(paste(".", command), "", "(setting optimization to BHHH)",
    sprintf("Iteration 0:   log likelihood = %s  ", formatC(ll0, digits = 8, format = "g")),
    sprintf("Iteration 4:   log likelihood = %s  ", formatC(ll, digits = 8, format = "g")), "",
    "ARIMA regression", "",
    header_line("Sample: 1875 thru 1972", "Number of obs", n),
    header_line("", sprintf("Wald chi2(%d)", sum(arma)), sprintf("%.2f", wald)),
    header_line(sprintf("Log likelihood = %s", formatC(ll, digits = 7, format = "g")), "Prob > chi2",
                sprintf("%.4f", pchisq(wald, sum(arma), lower.tail = FALSE))), "",
    strrep("-", 78), sprintf("%13s|%17s", "", "OPG"),
    "       level | Coefficient  Std. err.      z    P>|z|     [95% conf. interval]",
    paste0(strrep("-", 13), "+", strrep("-", 64)), "level        |",
    coefficient("_cons", coef(fit)["intercept"], se["intercept"]),
    paste0(strrep("-", 13), "+", strrep("-", 64)), "ARMA         |", arma_rows,
    paste0(strrep("-", 13), "+", strrep("-", 64)),
    coefficient("/sigma", sigma, sigma / sqrt(2 * n)), strrep("-", 78),
    "Note: The test of the variance against zero is one sided, and the two-sided",
    "confidence interval is truncated at zero.", "")
}
arima_ic <- function(command, names, fits) {
  rows <- mapply(function(name, fit) {
    sprintf("%12s | %10s %10s %10s %7d %10s %10s", name, nobs(fit), ".", g(as.numeric(logLik(fit))),
            attr(logLik(fit), "df"), g(AIC(fit)), g(BIC(fit)))
  }, names, fits)
  c(paste(".", command), "", "Akaike's information criterion and Bayesian information criterion", "",
    strrep("-", 77), "       Model |          N   ll(null)  ll(model)      df        AIC        BIC",
    paste0(strrep("-", 13), "+", strrep("-", 63)), rows, strrep("-", 77),
    "Note: BIC uses N = number of observations. See [R] IC note.", "")
}
# Half a unit of the last digit g() prints, which drops trailing zeros.
half_unit <- function(...) {
  max(sapply(c(...), function(x) {
    decimals <- sub("^[^.]*\\.?", "", g(x))
    0.5 * 10^-nchar(decimals)
  }))
}
orders <- list(ar1 = c(1, 0, 0), ar2 = c(2, 0, 0), arma11 = c(1, 0, 1))
fits <- lapply(orders, function(o) arima(LakeHuron, order = o, method = "ML"))
residuals2 <- residuals(fits$ar2)
log <- c(". use lakehuron, clear", "(Level of Lake Huron, 1875-1972)", "", ". tsset year", "",
         "Time variable: year, 1875 thru 1972", "        Delta: 1 unit", "")
expected <- data.frame()
for (name in names(orders)) {
  o <- orders[[name]]
  command <- sprintf("arima level, arima(%d,%d,%d)", o[1], o[2], o[3])
  line <- length(log) + 1
  if (name == "arma11") {
    log <- c(log, paste(". quietly", command), "")
  } else {
    log <- c(log, arima_block(command, fits[[name]], o))
  }
  if (name == "ar2") {
    # dfuller's header prints Number of obs; it fits nothing.
    dickey <- summary(lm(diff(residuals2) ~ head(residuals2, -1)))$coefficients[2, ]
    log <- c(log, ". predict res2, residuals", "", ". dfuller res2", "",
             sprintf("%-51s%-15s= %s", "Dickey-Fuller test for unit root", "Number of obs", length(residuals2) - 1),
             sprintf("%-51s%-15s= %s", "Variable: res2", "Number of lags", " 0"), "",
             "H0: Random walk without drift, d = 0", "",
             "                                       Dickey-Fuller",
             "                   Test      -------- critical value ---------",
             "              statistic           1%           5%          10%",
             strrep("-", 62), sprintf(" Z(t)       %11.3f       -3.517       -2.894       -2.582",
                                      dickey[1] / dickey[2]),
             strrep("-", 62), "MacKinnon approximate p-value for Z(t) = 0.0000.", "")
  }
  log <- c(log, arima_ic("estat ic", ".", fits[name]), paste(". estimates store", name), "")
  expected <- rbind(expected, data.frame(model = name, line = line, kind = "ML",
                                         logLik = as.numeric(logLik(fits[[name]])), k = attr(logLik(fits[[name]]), "df"),
                                         n = nobs(fits[[name]]), aic = AIC(fits[[name]]), bic = BIC(fits[[name]]),
                                         tolerance = half_unit(logLik(fits[[name]]), AIC(fits[[name]]),
                                                               BIC(fits[[name]]))))
}
log <- c(log, arima_ic("estimates stats ar1 ar2 arma11", names(orders), fits))
write_sample("stata-arima.log", log)
write_expected("stata-arima.expected", expected)

# SPost's fitstat. SPost 13 (Stata 13 and later) as its authors use it:
# the first model's measures saved quietly, so that they are printed only
# in the Saved column beside the Current one of a fit made quietly too,
# and their Difference; then fitstat after regress, whose df leaves the
# residual variance out. Listed as the columns come: Current, then Saved.
fitstat_values <- function(fit) {
  null <- update(fit, . ~ 1)
  n <- nobs(fit)
  k <- length(coef(fit))
  ll <- as.numeric(logLik(fit))
  ll0 <- as.numeric(logLik(null))
  values <- list(ll = ll, ll0 = ll0, n = n, k = k, dev = -2 * ll, dev_df = n - k, lr = 2 * (ll - ll0), lr_df = k - 1,
                 mcf = 1 - ll / ll0, mcfa = 1 - (ll - k) / ll0, ml = 1 - exp(2 * (ll0 - ll) / n),
                 aic = -2 * ll + 2 * k, bic = -2 * ll + k * log(n), bic_dev = -2 * ll - (n - k) * log(n),
                 bic_p = -2 * (ll - ll0) + (k - 1) * log(n))
  values$p <- pchisq(values$lr, values$lr_df, lower.tail = FALSE)
  values$cu <- values$ml / (1 - exp(2 * ll0 / n))
  if (inherits(fit, "glm") && family(fit)$family == "binomial") {
    p <- fitted(fit)
    y <- fit$y
    vxb <- var(predict(fit, type = "link"))
    modal <- max(sum(y), n - sum(y))
    values <- c(values, list(mz = vxb / (vxb + pi^2 / 3), efron = 1 - sum((y - p)^2) / sum((y - mean(y))^2),
                             tjur = mean(p[y == 1]) - mean(p[y == 0]), count = mean((p > 0.5) == y),
                             adjcount = (sum((p > 0.5) == y) - modal) / (n - modal), verr = pi^2 / 3,
                             vystar = vxb + pi^2 / 3))
  } else {
    values <- c(values, list(r2 = summary(fit)$r.squared, r2a = summary(fit)$adj.r.squared))
  }
  values
}
# One equation's rows of a matlist, twidth(24), %11.3f: the columns of
# every model given, and their differences where there are two.
spost13_rows <- function(equation, rows, width) {
  row <- function(label, values) {
    cells <- sprintf("%.3f", values)
    paste0(sprintf("%24s |", label), sprintf("%12s", cells[1]),
           if (length(cells) > 1) paste(sprintf("%13s", cells[-1]), collapse = ""), " ")
  }
  c(sprintf("%-25s|%s", equation, strrep(" ", width)), unlist(lapply(rows, function(r) row(r[[1]], r[[2]]))))
}
spost13_table <- function(values, heads) {
  two <- length(values) == 2
  width <- 12 + 13 * (length(heads) - 1)
  pick <- function(name) {
    v <- sapply(values, function(x) x[[name]])
    if (two) c(v, v[1] - v[2]) else v
  }
  df_label <- function(label, name) {
    d <- sapply(values, function(x) x[[name]])
    if (two) sprintf("%s(df=%d/%d/%d)", label, d[1], d[2], d[1] - d[2]) else sprintf("%s(df=%d)", label, d)
  }
  binary <- !is.null(values[[1]]$mz)
  p_values <- if (two) c(pick("p")[1:2], pchisq(abs(values[[1]]$lr - values[[2]]$lr),
                                                  abs(values[[1]]$lr_df - values[[2]]$lr_df), lower.tail = FALSE))
              else pick("p")
  equations <- list(
    list("Log-likelihood", list(list("Model", pick("ll")), list("Intercept-only", pick("ll0")))),
    list("Chi-square", c(list(list(df_label(if (two) "D" else "Deviance", "dev_df"), pick("dev"))),
                         if (binary) list(list(df_label("LR", "lr_df"), pick("lr")), list("p-value", p_values)))),
    list("R2", c(if (!binary) list(list("R2", pick("r2")), list("Adjusted R2", pick("r2a"))),
                 list(list("McFadden", pick("mcf")), list("McFadden(adjusted)", pick("mcfa"))),
                 if (binary) list(list("McKelvey & Zavoina", pick("mz"))),
                 list(list("Cox-Snell/ML", pick("ml")), list("Cragg-Uhler/Nagelkerke", pick("cu"))),
                 if (binary) list(list("Efron", pick("efron")), list("Tjur's D", pick("tjur")),
                                  list("Count", pick("count")), list("Count(adjusted)", pick("adjcount"))))),
    list("IC", list(list("AIC", pick("aic")), list("AIC divided by N", pick("aic") / c(pick("n")[1:length(values)],
                                                                                           if (two) 1)),
                    list(df_label("BIC", "k"), pick("bic")))),
    if (binary) list("Variance of", list(list("e", pick("verr")), list("y-star", pick("vystar")))))
  equations <- Filter(Negate(is.null), equations)
  if (two) equations[[4]][[2]][[2]][[2]][3] <- equations[[4]][[2]][[2]][[2]][1] - equations[[4]][[2]][[2]][[2]][2]
  rule <- paste0(strrep("-", 25), "+", strrep("-", width))
  out <- c("", paste0(strrep(" ", 25), "|", sprintf("%12s", heads[1]),
                      if (length(heads) > 1) paste(sprintf("%13s", heads[-1]), collapse = ""), " "), rule)
  for (i in seq_along(equations)) {
    if (i > 1) out <- c(out, rule)
    out <- c(out, spost13_rows(equations[[i]][[1]], equations[[i]][[2]], width))
  }
  out
}
bic_support <- function(current, saved) {
  difference <- abs(current$bic - saved$bic)
  support <- if (difference <= 2) "weak" else if (difference <= 6) "positive" else if (difference <= 10) "strong"
             else "very strong"
  sprintf("Difference of %8.3f in BIC provides %s support for %s model.", difference, support,
          if (saved$bic < current$bic) "saved" else "current")
}
expected_fit <- function(name, line, fit, k = attr(logLik(fit), "df"), aic = AIC(fit), bic = BIC(fit)) {
  data.frame(model = name, line = line, kind = "ML", logLik = as.numeric(logLik(fit)), k = k, n = nobs(fit),
             aic = aic, bic = bic, tolerance = 5e-4)
}
both <- glm(am ~ wt + hp, binomial, mtcars)
weight <- glm(am ~ wt, binomial, mtcars)
ols <- lm(mpg ~ wt, mtcars)
fs_both <- fitstat_values(both)
fs_weight <- fitstat_values(weight)
fs_ols <- fitstat_values(ols)
log <- c(". sysuse mtcars, clear", "")
saved <- expected_fit("both", length(log) + 1, both)
log <- c(log, logit_block("logit am wt hp", both, FALSE, TRUE), ". estimates store both", "",
         ". quietly fitstat, save", "")
expected <- rbind(expected_fit("weight", length(log) + 1, weight), saved)
log <- c(log, ". quietly logit am wt", "", ". estimates store weight", "", ". fitstat, diff",
         spost13_table(list(fs_weight, fs_both), c("Current", "Saved", "Difference")), "",
         "Note: Likelihood-ratio test assumes current model nested in saved model.", "",
         bic_support(fs_weight, fs_both), "")
expected <- rbind(expected, expected_fit("stata-fitstat", length(log) + 1, ols,
                                         aic = fs_ols$aic, bic = fs_ols$bic))
log <- c(log, regress_block("regress mpg wt", ols), ". fitstat", spost13_table(list(fs_ols), "regress"), "")
write_sample("stata-fitstat.log", log)
write_expected("stata-fitstat.expected", expected)

# SPost 9 (fitstat 1.9, Stata 9 to 12): measures two to a line, then
# with using() the Current, Saved and Difference columns. Neither fit is
# stored, so both take the file's name.
at_column <- function(line, column, text) paste0(line, strrep(" ", max(0, column - 1 - nchar(line))), text)
spost9_single <- function(v) {
  stats <- list(list("Log-Lik Intercept Only", v$ll0, 1), list("Log-Lik Full Model", v$ll, 2),
                list(sprintf("D(%d)", v$dev_df), v$dev, 1), list(sprintf("LR(%d)", v$lr_df), v$lr, 2),
                list("Prob > LR", v$p, 2), list("McFadden's R2", v$mcf, 1), list("McFadden's Adj R2", v$mcfa, 2),
                list("ML (Cox-Snell) R2", v$ml, 1), list("Cragg-Uhler(Nagelkerke) R2", v$cu, 2),
                list("McKelvey & Zavoina's R2", v$mz, 0), list("Efron's R2", v$efron, 0),
                list("Variance of y*", v$vystar, 1), list("Variance of error", v$verr, 2),
                list("Count R2", v$count, 1), list("Adj Count R2", v$adjcount, 2), list("AIC", v$aic / v$n, 1),
                list("AIC*n", v$aic, 2), list("BIC", v$bic_dev, 1), list("BIC'", v$bic_p, 2),
                list("BIC used by Stata", v$bic, 1), list("AIC used by Stata", v$aic, 2))
  rows <- list()
  cells <- rep("", 4)
  column <- 1
  flush <- function() {
    rows[[length(rows) + 1]] <<- sub(" +$", "", sprintf("%-27s%11s   %-27s%11s", cells[1], cells[2], cells[3], cells[4]))
    cells <<- rep("", 4)
    column <<- 1
  }
  for (s in stats) {
    if (s[[3]] == 1 && column == 3) flush()
    if (s[[3]] == 2 && column == 1) column <- 3
    cells[column] <- paste0(s[[1]], ":")
    cells[column + 1] <- sprintf("%.3f", s[[2]])
    column <- column + 2
    if (column == 5) flush()
  }
  if (column > 1) flush()
  unlist(rows)
}
spost9_using <- function(current, saved) {
  row <- function(label, a, b, d, dfs = NULL) {
    cell <- function(x, i) paste0(sprintf("%11.3f", x), if (!is.null(dfs)) sprintf("(%d)", dfs[i]))
    at_column(at_column(at_column(label, 28, cell(a, 1)), 46, cell(b, 2)), 64, cell(d, 3))
  }
  lr_p <- pchisq(abs(current$lr - saved$lr), abs(current$lr_df - saved$lr_df), lower.tail = FALSE)
  stat <- function(label, name) row(label, current[[name]], saved[[name]], current[[name]] - saved[[name]])
  c(at_column(at_column(at_column("", 30, "  Current"), 48, "    Saved"), 65, "Difference"),
    at_column(at_column("Model:", 30, sprintf("%9s", "logit")), 48, sprintf("%9s", "logit")),
    at_column(at_column(at_column("N:", 30, sprintf("%9.0f", current$n)), 48, sprintf("%9.0f", saved$n)), 66,
              sprintf("%9.0f", current$n - saved$n)),
    stat("Log-Lik Intercept Only", "ll0"), stat("Log-Lik Full Model", "ll"),
    row("D", current$dev, saved$dev, abs(current$dev - saved$dev),
        c(current$dev_df, saved$dev_df, abs(current$dev_df - saved$dev_df))),
    row("LR", current$lr, saved$lr, abs(current$lr - saved$lr),
        c(current$lr_df, saved$lr_df, abs(current$lr_df - saved$lr_df))),
    row("Prob > LR", current$p, saved$p, lr_p), stat("McFadden's R2", "mcf"), stat("McFadden's Adj R2", "mcfa"),
    stat("ML (Cox-Snell) R2", "ml"), stat("Cragg-Uhler(Nagelkerke) R2", "cu"), stat("McKelvey & Zavoina's R2", "mz"),
    stat("Efron's R2", "efron"), stat("Variance of y*", "vystar"), stat("Variance of error", "verr"),
    stat("Count R2", "count"), stat("Adj Count R2", "adjcount"),
    row("AIC", current$aic / current$n, saved$aic / saved$n, current$aic / current$n - saved$aic / saved$n),
    stat("AIC*n", "aic"), stat("BIC", "bic_dev"), stat("BIC'", "bic_p"), stat("BIC used by Stata", "bic"),
    stat("AIC used by Stata", "aic"))
}
log <- c(". sysuse mtcars, clear", "")
expected <- expected_fit("stata-fitstat9 (1)", length(log) + 1, both)
log <- c(log, logit_block("logit am wt hp", both, FALSE, FALSE), ". fitstat, saving(m1)", "",
         "Measures of Fit for logit of am", "", spost9_single(fs_both), "", "(Indices saved in matrix fs_m1)", "")
expected <- rbind(expected, expected_fit("stata-fitstat9 (2)", length(log) + 1, weight))
bic_prime <- abs(fs_weight$bic_p - fs_both$bic_p)
log <- c(log, logit_block("logit am wt", weight, FALSE, FALSE), ". fitstat, using(m1)", "",
         "Measures of Fit for logit of am", "", spost9_using(fs_weight, fs_both), "",
         sprintf("Difference of %8.3f in BIC' provides %s support for %s model.", bic_prime,
                 if (bic_prime <= 2) "weak" else if (bic_prime <= 6) "positive" else if (bic_prime <= 10) "strong"
                 else "very strong", if (fs_weight$bic_p > fs_both$bic_p) "saved" else "current"), "",
         "Note: p-value for difference in LR is only valid if models are nested.")
write_sample("stata-fitstat9.log", log)
write_expected("stata-fitstat9.expected", expected)

# nbreg with factor variables, their base levels shown: the table of
# estimates names a level under its factor's heading, and puts the
# dispersion below the coefficients (/lnalpha, then alpha), no term.
nbreg_block <- function(command, fit) {
  s <- summary(fit)$coefficients
  alpha <- 1 / fit$theta
  lnalpha_se <- fit$SE.theta / fit$theta
  row <- function(name, est, se) {
    z <- est / se
    sprintf("%12s | %10s %10s %8.2f %7.3f %12s %11s", name, g(est), g(se), z, 2 * pnorm(-abs(z)),
            g(est - 1.959964 * se), g(est + 1.959964 * se))
  }
  factor_rows <- function(variable) {
    levels <- levels(warpbreaks[[variable]])
    held <- paste0(variable, levels[-1])
    if (!all(held %in% rownames(s))) return(character())
    c(sprintf("%12s |", variable), sprintf("%12s | %10s  (base)", levels[1], "0"),
      mapply(function(level, term) row(level, s[term, 1], s[term, 2]), levels[-1], held), sprintf("%12s |", ""))
  }
  ll <- as.numeric(logLik(fit))
  c(paste(".", command), "", sprintf("Iteration 3:   log likelihood = %s", formatC(ll, digits = 8, format = "g")), "",
    sprintf("%-56s%-14s= %6s", "Negative binomial regression", "Number of obs", nobs(fit)),
    sprintf("%-56s%-14s= %6.4f", sprintf("Log likelihood = %s", formatC(ll, digits = 8, format = "g")),
            "Pseudo R2", 0.05),
    "", strrep("-", 78),
    "      breaks | Coefficient  Std. err.      z    P>|z|     [95% conf. interval]",
    paste0(strrep("-", 13), "+", strrep("-", 64)),
    factor_rows("wool"), factor_rows("tension"), row("_cons", s["(Intercept)", 1], s["(Intercept)", 2]),
    paste0(strrep("-", 13), "+", strrep("-", 64)), row("/lnalpha", log(alpha), lnalpha_se),
    paste0(strrep("-", 13), "+", strrep("-", 64)),
    sprintf("%12s | %10s %10s %40s", "alpha", g(alpha), g(alpha * lnalpha_se), ""),
    strrep("-", 78), "")
}
nb_ic <- function(fit) {
  c(". estat ic", "", "Akaike's information criterion and Bayesian information criterion", "", strrep("-", 77),
    "       Model |          N   ll(null)  ll(model)      df        AIC        BIC",
    paste0(strrep("-", 13), "+", strrep("-", 63)),
    sprintf("%12s | %10s %10s %10s %7d %10s %10s", ".", nobs(fit), ".", g(as.numeric(logLik(fit))),
            attr(logLik(fit), "df"), g(AIC(fit)), g(BIC(fit))), strrep("-", 77), "")
}
fits <- list(wool_and_tension = MASS::glm.nb(breaks ~ wool + tension, warpbreaks),
             tension = MASS::glm.nb(breaks ~ tension, warpbreaks))
commands <- c(wool_and_tension = "nbreg breaks i.wool i.tension, baselevels",
              tension = "nbreg breaks i.tension, baselevels")
log <- c(". sysuse warpbreaks, clear", "")
expected <- data.frame()
for (name in names(fits)) {
  expected <- rbind(expected, expected_row(name, length(log) + 1, fits[[name]]))
  log <- c(log, nbreg_block(commands[[name]], fits[[name]]), nb_ic(fits[[name]]),
           paste(". estimates store", name), "")
}
write_sample("stata-nbreg.log", log)
write_expected("stata-nbreg.expected", expected)
