# Cormack-Jolly-Seber fits of a small set of encounter histories, made in R
# and printed in the layout of a MARK output file, so that the MARK reader's
# every number can be held to R's. MARK leaves the multinomial constants out
# of -2logL; so does this likelihood: the probability of each history given
# its first release, nothing more.
args <- commandArgs(trailingOnly = TRUE)
out <- if (length(args)) args[1] else "."

histories <- c("11111" = 3, "11110" = 4, "11011" = 2, "10101" = 3, "11000" = 9,
               "10000" = 30, "01111" = 5, "01100" = 10, "01000" = 25, "00111" = 6,
               "00110" = 8, "00100" = 28, "00011" = 12, "00010" = 30, "10110" = 2,
               "11100" = 7, "01010" = 3, "10010" = 2, "00101" = 4, "01101" = 2,
               "10100" = 5, "01001" = 2, "11010" = 3, "00000" = 0)
histories <- histories[histories > 0]
occasions <- 5
seen <- lapply(strsplit(names(histories), ""), function(x) as.integer(x))

history_probability <- function(h, phi, p) {
  first <- which(h == 1)[1]
  last <- max(which(h == 1))
  prob <- 1
  if (last > first) for (j in (first + 1):last) {
    prob <- prob * phi[j - 1] * (if (h[j] == 1) p[j - 1] else 1 - p[j - 1])
  }
  chi <- 1  # never seen after `last`
  if (last < occasions) for (j in (occasions - 1):last) {
    chi <- (1 - phi[j]) + phi[j] * (1 - p[j]) * chi
  }
  prob * chi
}

minus2logL <- function(beta, design) {
  real <- plogis(design$phi %*% beta)
  recapture <- plogis(design$p %*% beta)
  -2 * sum(histories * log(mapply(function(h) history_probability(h, real, recapture), seen)))
}

# Releases that could be seen again: MARK's effective sample size for
# live encounters.
ess <- sum(histories * sapply(seen, function(h) sum(h[seq_len(occasions - 1)] == 1 &
                                                    seq_len(occasions - 1) >= which(h == 1)[1])))
cohort <- sapply(seen, function(h) which(h == 1)[1])
saturated <- -2 * sum(histories * log(histories / ave(histories, cohort, FUN = sum)))

intervals <- occasions - 1
models <- list(
  "Phi(.)p(.)" = list(phi = cbind(rep(1, intervals), 0), p = cbind(0, rep(1, intervals)),
                      labels = c("Phi:(Intercept)", "p:(Intercept)")),
  "Phi(t)p(.)" = list(phi = cbind(diag(intervals), 0), p = cbind(matrix(0, intervals, intervals), 1),
                      labels = c(paste0("Phi:time", 1:intervals), "p:(Intercept)")),
  "Phi(t)p(t)" = list(phi = cbind(diag(intervals), matrix(0, intervals, intervals)),
                      p = cbind(matrix(0, intervals, intervals), diag(intervals)),
                      labels = c(paste0("Phi:time", 1:intervals), paste0("p:time", 2:occasions))))

f5 <- function(x) sprintf("%.5f", x)
f7 <- function(x) sprintf("%.7f", x)
lines <- c("   Program  MARK  - Survival Rate Estimation with Capture-Recapture Data",
           "   Fits written by tests/golden/fits/make-samples.sh from R, in MARK's layout",
           "",
           "  INPUT --- proc title made in R;",
           "",
           "  INPUT --- proc chmatrix occasions= 5 groups= 1 etype= Live Nodes= 101 ICMeans NoHist hist= 23;",
           "",
           sprintf("      Number of unique encounter histories read was %d.", length(histories)),
           "      Data type is Live Recaptures (CJS)",
           "")
expected <- data.frame()
for (name in names(models)) {
  design <- models[[name]]
  nbeta <- ncol(design$phi)
  fit <- optim(rep(0.3, nbeta), minus2logL, design = design, method = "BFGS",
               control = list(reltol = 1e-14, maxit = 5000), hessian = TRUE)
  m2ll <- fit$value
  singular <- eigen(fit$hessian / 2, symmetric = TRUE)$values
  k <- sum(singular > max(singular) * 1e-6)  # estimable: the confounded last pair counts once
  aic <- m2ll + 2 * k
  aicc <- aic + 2 * k * (k + 1) / (ess - k - 1)
  bic <- m2ll + k * log(ess)
  se <- sqrt(pmax(diag(MASS::ginv(fit$hessian / 2)), 0))
  start <- length(lines) + 1
  lines <- c(lines,
    "  INPUT --- proc estimate link=Logit NOLOOP varest=2ndPart;",
    "",
    sprintf("  INPUT --- model={ %s };", name),
    "",
    " Link Function Used is LOGIT",
    sprintf(" -2logL(saturated) = %s", f5(saturated)),
    sprintf(" Effective Sample Size = %d", ess),
    "",
    sprintf(" Number of function evaluations was %d for %d parameters.", fit$counts[1], nbeta),
    sprintf(" -2logL { %s } = %s", name, f5(m2ll)),
    sprintf(" Penalty { %s } = 0.0000000", name),
    sprintf(" S Vector { %s }:", name),
    paste(sprintf("%15.7E", singular), collapse = ""),
    sprintf(" Gap Method for Num. of Estimated Parameters { %s } = %d", name, k),
    sprintf(" Numerical Threshold Method for Num. of Estimated Parameters { %s } = %d", name, k),
    sprintf(" Number of Estimated Parameters { %s } = %d", name, k),
    sprintf(" DEVIANCE { %s } = %s", name, f5(m2ll - saturated)),
    sprintf(" DEVIANCE Degrees of Freedom { %s } = %d", name, length(histories) - k),
    sprintf(" AIC { %s } = %s", name, f5(aic)),
    sprintf(" AICc { %s } = %s", name, f5(aicc)),
    sprintf(" BIC { %s } = %s", name, f5(bic)),
    "",
    sprintf("                      LOGIT Link Function Parameters of { %s }", name),
    "                                                              95% Confidence Interval",
    "                 Parameter                    Beta         Standard Error      Lower           Upper",
    " -------------------------  --------------  --------------  --------------  --------------",
    sprintf("  %3d:%-22s%16s%16s%16s%16s", seq_len(nbeta), design$labels, f7(fit$par), f7(se),
            f7(fit$par - 1.96 * se), f7(fit$par + 1.96 * se)),
    "",
    sprintf("                      Real Function Parameters of { %s }", name),
    "                 Parameter                  Estimate       Standard Error",
    " --------------------------  --------------  --------------",
    sprintf("  %3d:%-22s%16s", seq_len(intervals), paste0("Phi ", seq_len(intervals)),
            f7(plogis(design$phi %*% fit$par))),
    "",
    "   CPU Time in seconds for last procedure was 0.02",
    "")
  expected <- rbind(expected, data.frame(model = name, line = start, kind = "ConstantsDropped",
                                         logLik = -m2ll / 2, k = k, n = ess, aic = aic, bic = bic,
                                         tolerance = 1e-5))
}
lines <- c(lines, "  INPUT --- proc stop;", "", "     CPU Time in minutes for this job was 0.00")

write_sample <- function(file, text) writeLines(text, file.path(out, file))
write_expected <- function(file, table) {
  write.table(table, file.path(out, file), sep = "\t", quote = FALSE, row.names = FALSE)
}
write_sample("mark-cjs.out", lines)
write_expected("mark-cjs.expected", expected)

# The same run with MARK's two counts apart for the last model (the gap
# method finds one parameter fewer than the threshold method) and with its
# output ending in the middle of the second model, as an aborted run leaves it.
last <- "Phi(t)p(t)"
threshold <- grep(sprintf("Numerical Threshold Method for Num. of Estimated Parameters { %s }", last),
                  lines, fixed = TRUE)
counts <- lines
counts[threshold] <- sub("= [0-9]+$", paste("=", expected$k[3] + 1), counts[threshold])
write_sample("mark-two-counts.out", counts)
write_expected("mark-two-counts.expected", expected)
cut <- grep("-2logL { Phi(t)p(.) }", lines, fixed = TRUE)
write_sample("mark-aborted.out", lines[seq_len(cut)])
