#!/usr/bin/env bash
# drav-report against R: R fits every subset of four terms of mtcars (cyl a
# factor), writes the terms wide (one column per term, "+" for the factor,
# as all-subsets exports do) and long (model, term, estimate, std.error, as
# tidy coefficient tables do), and then computes every number Drav prints
# by itself, in plain R, from the fits: the criteria from R's own AIC() and
# BIC(), the weights (and bbmle's AICctab where it is installed), one
# parameter's average, every term's importance and averages, QAICc and the
# subsets. Skipped, and says so, without R.
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
d <- mtcars
d$cyl <- factor(d$cyl)
terms <- c("wt", "hp", "am", "cyl")
subsets <- unlist(lapply(0:4, function(k) combn(terms, k, simplify = FALSE)), recursive = FALSE)
forms <- sapply(subsets, function(s) paste("mpg ~", if (length(s)) paste(s, collapse = " + ") else "1"))
fits <- lapply(forms, function(f) lm(as.formula(f), data = d))
ll <- sapply(fits, function(f) as.numeric(logLik(f)))
k <- sapply(fits, function(f) attr(logLik(f), "df"))
wide <- data.frame(model = forms, logLik = ll, df = k, nobs = sapply(fits, nobs))
for (t in c("wt", "hp", "am")) {
  wide[[t]] <- sapply(fits, function(f) if (t %in% names(coef(f))) coef(f)[[t]] else NA)
  wide[[paste0(t, "_se")]] <- sapply(fits, function(f) if (t %in% names(coef(f))) sqrt(diag(vcov(f)))[[t]] else NA)
}
wide$cyl <- ifelse(sapply(subsets, function(s) "cyl" %in% s), "+", NA)
# What the exporters add beside the terms; Drav must neither read them as
# terms nor trust them.
wide$delta <- 99
wide$weight <- 0.5
write.csv(wide, file.path(dir, "wide.csv"), row.names = FALSE)
long <- do.call(rbind, lapply(seq_along(fits), function(i) {
  s <- summary(fits[[i]])$coefficients
  data.frame(model = forms[i], term = rownames(s), estimate = s[, "Estimate"], std.error = s[, "Std. Error"])
}))
write.csv(long, file.path(dir, "long.csv"), row.names = FALSE)
saveRDS(list(forms = forms, ll = ll, k = k, n = nobs(fits[[1]]), long = long, aic = sapply(fits, AIC),
             bic = sapply(fits, BIC), fits = fits), file.path(dir, "r.rds"))
R

# One row per run: name, form of the terms, criterion, chat, level,
# delta-max, top, and the command. NA where the option is not given.
cat >"$tmp/cases.tsv" <<'CASES'
name	form	criterion	chat	level	deltamax	top	command
table_aic	wide	aic	NA	0.95	NA	NA	table
table_aicc	wide	aicc	NA	0.95	NA	NA	table
table_bic	wide	bic	NA	0.95	NA	NA	table
table_qaicc	wide	qaicc	1.7	0.95	NA	NA	table
table_delta	wide	aicc	NA	0.95	4	NA	table
table_top	wide	aicc	NA	0.95	NA	5	table
importance_wide	wide	aicc	NA	0.95	NA	NA	importance
importance_long	long	aic	NA	0.95	NA	NA	importance
importance_both_subsets	long	aicc	NA	0.95	6	4	importance
average_wide	wide	aicc	NA	0.95	NA	NA	average
average_long_90	long	aicc	NA	0.9	NA	NA	average
average_long_qaicc	long	qaicc	2.5	0.95	NA	NA	average
average_long_delta	long	bic	NA	0.95	3	NA	average
average_long_top	long	aicc	NA	0.99	NA	3	average
average_wt	wide	aicc	NA	0.9	NA	NA	one
CASES

Rscript --vanilla "$tmp/fit.R" "$tmp" || { echo "FAIL: R could not fit the models"; exit 1; }
failed=0
while IFS=$'\t' read -r name form criterion chat level deltamax top command; do
  [ "$name" = name ] && continue
  args=(--format csv --criterion "$criterion" --level "$level")
  [ "$chat" != NA ] && args+=(--chat "$chat")
  [ "$deltamax" != NA ] && args+=(--delta-max "$deltamax")
  [ "$top" != NA ] && args+=(--top "$top")
  [ "$form" = long ] && args+=(--coefficients "$tmp/long.csv")
  [ "$command" = average ] && args+=(--all)
  [ "$command" = one ] && command=average && args+=(--estimate wt --se wt_se)
  if ! "$bin" "$command" "${args[@]}" "$tmp/wide.csv" >"$tmp/$name.csv" 2>"$tmp/$name.err"; then
    echo "FAIL: drav-report $command ${args[*]}"; cat "$tmp/$name.err"; failed=1
  fi
done <"$tmp/cases.tsv"
[ "$failed" -eq 0 ] || { echo "drav_report_versus_r: 0 passed, 1 failed"; exit 1; }

cat >"$tmp/check.R" <<'R'
dir <- commandArgs(trailingOnly = TRUE)[1]
r <- readRDS(file.path(dir, "r.rds"))
cases <- read.delim(file.path(dir, "cases.tsv"), stringsAsFactors = FALSE)
bad <- 0
# Every number to 1e-9 relative; NA where R has none.
same <- function(what, drav, expected) {
  drav <- unname(drav); expected <- unname(expected)
  ok <- length(drav) == length(expected) && all(is.na(drav) == is.na(expected)) &&
        all(abs(drav - expected) <= 1e-9 * abs(expected), na.rm = TRUE)
  if (!ok) { cat("MISMATCH", what, "\n"); print(cbind(drav, expected)); bad <<- bad + 1 }
}
weights <- function(x) { d <- x - min(x); exp(-d / 2) / sum(exp(-d / 2)) }
criterion <- function(name, chat) {
  ll <- r$ll; k <- r$k; n <- r$n
  switch(name, aic = r$aic, aicc = r$aic + 2 * k * (k + 1) / (n - k - 1),
         bic = r$bic, qaicc = -2 * ll / chat + 2 * k + 2 * k * (k + 1) / (n - k - 1))
}
# The terms each model holds, and their estimates and SEs, by form. In wide
# form the factor is held as "+" and has no number.
held <- function(form) {
  if (form == "long") return(r$long)
  terms <- c("wt", "hp", "am", "cyl")
  rows <- lapply(terms, function(t) {
    has <- grepl(paste0("\\b", t, "\\b"), r$forms)
    l <- r$long[r$long$term == t, ]
    data.frame(model = r$forms[has], term = t,
               estimate = if (t == "cyl") NA else l$estimate[match(r$forms[has], l$model)],
               std.error = if (t == "cyl") NA else l$std.error[match(r$forms[has], l$model)])
  })
  do.call(rbind, rows)
}
for (i in seq_len(nrow(cases))) {
  cs <- cases[i, ]
  out <- read.csv(file.path(dir, paste0(cs$name, ".csv")), stringsAsFactors = FALSE)
  value <- criterion(cs$criterion, cs$chat)
  # The subset by rank and delta over the whole set; the weights again over it.
  o <- order(value)
  keep <- rep(TRUE, length(value))
  if (!is.na(cs$deltamax)) keep <- keep & value - min(value) <= cs$deltamax
  if (!is.na(cs$top)) keep <- keep & rank(value, ties.method = "first") <= cs$top
  models <- r$forms[keep]
  w <- setNames(weights(value[keep]), models)
  label <- function(x) paste(cs$name, x)
  if (cs$command == "table") {
    out <- out[match(models, out$model), ]
    same(label("rows"), nrow(out), length(models))
    same(label(cs$criterion), out[[cs$criterion]], value[keep])
    same(label("weight"), out$weight, w)
    so <- order(value[keep])
    same(label("cumulative"), out$cumulative_weight[so], cumsum(w[so]))
    same(label("evidence ratio"), out$evidence_ratio, max(w) / w)
    if (cs$name == "table_aicc" && requireNamespace("bbmle", quietly = TRUE)) {
      tab <- do.call(bbmle::AICctab, c(unname(r$fits), list(weights = TRUE, base = TRUE, sort = FALSE, nobs = r$n)))
      same(label("bbmle AICctab AICc"), out$aicc, as.numeric(tab$AICc))
      same(label("bbmle AICctab weight"), out$weight, as.numeric(tab$weight))
    }
    next
  }
  if (cs$command == "one") {
    l <- r$long[r$long$term == "wt" & r$long$model %in% models, ]
    v <- weights(value[match(l$model, r$forms)])
    est <- sum(v * l$estimate)
    se <- sqrt(sum(v * (l$std.error^2 + (l$estimate - est)^2)))
    z <- qnorm(0.5 + cs$level / 2)
    same(label("one parameter"), c(out$estimate, out$se, out$lower, out$upper, out$models),
         c(est, se, est - z * se, est + z * se, nrow(l)))
    next
  }
  h <- held(cs$form)
  h <- h[h$model %in% models, ]
  # QAIC assumes variances chat times an ordinary fit's: the SEs widen by sqrt(chat).
  if (!is.na(cs$chat)) h$std.error <- h$std.error * sqrt(cs$chat)
  terms <- unique(h$term)
  imp <- sapply(terms, function(t) sum(w[h$model[h$term == t]]))
  count <- sapply(terms, function(t) sum(h$term == t))
  out <- out[match(terms, out$term), ]
  if (!identical(sort(out$term), sort(terms))) { cat("MISMATCH", label("terms"), "\n"); bad <- bad + 1 }
  same(label("importance"), out$importance, imp)
  same(label("models"), out$models, count)
  if (is.unsorted(rev(read.csv(file.path(dir, paste0(cs$name, ".csv")))$importance))) {
    cat("MISMATCH", label("not sorted by importance"), "\n"); bad <- bad + 1
  }
  if (cs$command != "average") next
  z <- qnorm(0.5 + cs$level / 2)
  for (t in terms) {
    ht <- h[h$term == t, ]
    wt <- w[ht$model] / sum(w[ht$model])
    est <- sum(wt * ht$estimate)
    se <- sqrt(sum(wt * (ht$std.error^2 + (ht$estimate - est)^2)))
    b0 <- ifelse(models %in% ht$model, ht$estimate[match(models, ht$model)], 0)
    s0 <- ifelse(models %in% ht$model, ht$std.error[match(models, ht$model)], 0)
    full <- sum(w * b0)
    fullse <- sqrt(sum(w * (s0^2 + (b0 - full)^2)))
    row <- out[out$term == t, ]
    same(label(paste(t, "conditional")), c(row$estimate, row$se, row$lower, row$upper),
         c(est, se, est - z * se, est + z * se))
    same(label(paste(t, "full")), c(row$full_estimate, row$full_se), c(full, fullse))
  }
}
cat(nrow(cases), "runs compared\n")
quit(status = if (bad == 0) 0 else 1)
R
if Rscript --vanilla "$tmp/check.R" "$tmp"; then
  echo "drav_report_versus_r: 1 passed, 0 failed"
else
  echo "drav_report_versus_r: 0 passed, 1 failed"
  exit 1
fi
