#!/usr/bin/env bash
# The exports of R that once gave a wrong number without a word: R fits the
# models (npk, swiss, ToothGrowth, warpbreaks), writes each file as a
# researcher would, and computes the expected numbers in base R; drav-report
# must agree, or refuse and say why. Skipped, and says so, where R is not
# installed.
set -u
bin=$1
source "$(dirname "$0")/checks.sh"
if ! command -v Rscript >/dev/null; then
  echo "SKIPPED: Rscript is not installed (apt-get install r-base-core); no R exports were read"
  exit 77
fi
export LC_ALL=C.UTF-8

cat >"$tmp/write.R" <<'R'
dir <- commandArgs(trailingOnly = TRUE)[1]
out <- function(name) file.path(dir, name)
expect <- function(name, value) cat(sprintf("%s %.12g\n", name, value), file = out("expected"), append = TRUE)
ll <- function(f) as.numeric(logLik(f))
k <- function(f) attr(logLik(f), "df")
weights <- function(ic) { w <- exp(-(ic - min(ic)) / 2); w / sum(w) }
aicc <- function(f) { n <- nobs(f); -2 * ll(f) + 2 * k(f) + 2 * k(f) * (k(f) + 1) / (n - k(f) - 1) }

# All subsets of npk's factors block, N, P and K, as an all-subsets export
# lays them out: + where a model holds the factor, NA where not.
vars <- c("block", "N", "P", "K")
subs <- unlist(lapply(0:4, function(i) combn(vars, i, simplify = FALSE)), recursive = FALSE)
fits <- lapply(subs, function(s) lm(if (length(s)) reformulate(s, "yield") else yield ~ 1, data = npk))
tab <- data.frame(`(Intercept)` = sapply(fits, function(f) coef(f)[[1]]), check.names = FALSE)
for (v in vars) tab[[v]] <- ifelse(sapply(subs, function(s) v %in% s), "+", NA)
tab$df <- sapply(fits, k); tab$logLik <- sapply(fits, ll); tab$AICc <- sapply(fits, aicc)
tab$delta <- tab$AICc - min(tab$AICc); tab$weight <- weights(tab$AICc)
write.csv(tab[order(tab$AICc), ], out("npk.csv"))
for (v in vars) expect(paste0("npk_", v), sum(tab$weight[!is.na(tab[[v]])]))

# The same with numeric terms named N and K, known by their SE columns.
sw <- swiss; names(sw)[match(c("Agriculture", "Education"), names(sw))] <- c("N", "K")
subs <- list("N", "K", c("N", "K"), c("N", "Catholic"))
fits <- lapply(subs, function(s) lm(reformulate(s, "Fertility"), data = sw))
tab <- data.frame(model = sapply(subs, paste, collapse = "+"))
for (v in c("N", "K")) {
  tab[[v]] <- sapply(fits, function(f) if (v %in% names(coef(f))) coef(f)[[v]] else NA)
  tab[[paste0(v, "_se")]] <- sapply(fits, function(f) if (v %in% names(coef(f))) coef(summary(f))[v, 2] else NA)
}
tab$df <- sapply(fits, k); tab$logLik <- sapply(fits, ll); tab$n <- nrow(sw)
write.csv(tab, out("swiss.csv"), row.names = FALSE)
w <- weights(sapply(fits, aicc)); held <- !is.na(tab$K)
expect("swiss_K", sum(w[held] / sum(w[held]) * tab$K[held]))

# An AICc column computed by hand for a model of 10 parameters on 10 rows.
d <- data.frame(y = c(3.1, 4.2, 5, 6.3, 7.1, 8.4, 9, 10.2, 11.5, 12.1), x = 1:10)
for (j in 2:9) d[[paste0("z", j)]] <- sin(j * d$x)
small <- lm(y ~ x, d); big <- lm(y ~ ., d)
write.csv(data.frame(model = c("small", "big"), logLik = c(ll(small), ll(big)), K = c(k(small), k(big)), n = 10,
                     AICc = c(aicc(small), -222.57)), out("small-n.csv"), row.names = FALSE)

# ToothGrowth: the models, coef(summary()) bound with model and term
# columns, broom's tidy() spread wide, glance(), and bbmle's AICctab.
tg <- ToothGrowth; tg$dose <- factor(tg$dose)
forms <- c(m1 = "len ~ supp", m2 = "len ~ dose", m3 = "len ~ supp + dose", m4 = "len ~ supp * dose")
fits <- lapply(forms, function(f) lm(as.formula(f), tg))
models <- data.frame(model = names(forms), logLik = sapply(fits, ll), K = sapply(fits, k), n = 60)
write.csv(models, out("tooth.csv"), row.names = FALSE)
cs <- do.call(rbind, lapply(names(fits), function(m) {
  s <- coef(summary(fits[[m]])); cbind(data.frame(model = m, term = rownames(s)), as.data.frame(s))
}))
write.csv(cs, out("coef-summary.csv"), row.names = FALSE)
write.csv(cs[cs$model != "m4", ], out("coef-cut-short.csv"), row.names = FALSE)
w <- weights(sapply(fits, aicc))
held <- names(forms)[sapply(fits, function(f) "suppVC" %in% names(coef(f)))]
est <- sapply(fits[held], function(f) coef(f)[["suppVC"]]); se <- sapply(fits[held], function(f) coef(summary(f))["suppVC", 2])
wh <- w[names(forms) %in% held] / sum(w[names(forms) %in% held]); bar <- sum(wh * est)
expect("tooth_suppVC", bar)
expect("tooth_suppVC_se", sqrt(sum(wh * (se^2 + (est - bar)^2))))
# QAICc with c = 2.5: the weights by QAICc, every SE widened by sqrt(c).
chat <- 2.5
qaicc <- sapply(fits, function(f) -2 * ll(f) / chat + 2 * k(f) + 2 * k(f) * (k(f) + 1) / (60 - k(f) - 1))
wq <- weights(qaicc)[names(forms) %in% held]; wq <- wq / sum(wq); bq <- sum(wq * est)
expect("tooth_qaicc_se", sqrt(sum(wq * (chat * se^2 + (est - bq)^2))))
if (requireNamespace("broom", quietly = TRUE)) {
  td <- do.call(rbind, lapply(names(fits), function(m) cbind(model = m, broom::tidy(fits[[m]]))))
  write.csv(td, out("tidy.csv"), row.names = FALSE)
  write.csv(merge(models, reshape(td, idvar = "model", timevar = "term", direction = "wide")), out("tidy-wide.csv"),
            row.names = FALSE)
  g <- do.call(rbind, lapply(fits, broom::glance)); g$K <- sapply(fits, k)
  write.csv(cbind(model = names(forms), g), out("glance.csv"), row.names = FALSE)
}
if (requireNamespace("bbmle", quietly = TRUE)) {
  at <- bbmle::AICctab(fits$m1, fits$m2, fits$m3, fits$m4, logLik = TRUE, base = TRUE, nobs = 60,
                       mnames = names(forms))
  write.csv(as.data.frame(at), out("aicctab.csv"))
}

# warpbreaks: wool * tension and wool:tension are one fit in two
# parametrisations, so their AICc, rounded as a package prints it, tie; two
# files list the tie in either order.
fits <- list(full = lm(breaks ~ wool * tension, warpbreaks), cells = lm(breaks ~ wool:tension, warpbreaks),
             t = lm(breaks ~ tension, warpbreaks), w = lm(breaks ~ wool, warpbreaks))
tab <- data.frame(model = names(fits), AICc = round(sapply(fits, aicc), 2), wool = c("+", NA, NA, "+"),
                  tension = c("+", NA, "+", NA), `wool:tension` = c("+", "+", NA, NA), check.names = FALSE)
write.csv(tab[c(1, 2, 3, 4), ], out("tie-a.csv"), row.names = FALSE)
write.csv(tab[c(2, 1, 3, 4), ], out("tie-b.csv"), row.names = FALSE)

# write.table as it stands: blanks between fields, quotes escaped by \.
write.table(data.frame(model = c('say "hi", then', "plain"), logLik = c(-10.5, -11), K = c(2, 3)), out("escaped.txt"))
R
Rscript --vanilla "$tmp/write.R" "$tmp" || { echo "FAIL: R could not write the exports"; exit 1; }
expected() { awk -v n="$1" '$1 == n { print $2 }' "$tmp/expected"; }
# Whether two numbers agree to 1e-9 of the larger.
near() { awk -v a="$1" -v b="$2" 'BEGIN { d = a - b; if (d < 0) d = -d; m = (a < 0 ? -a : a); exit !(d <= 1e-9 * (m > 1 ? m : 1)) }'; }
check_near() {  # name, expected, actual
  if [ -n "$3" ] && near "$2" "$3"; then passes=$((passes + 1)); else echo "FAIL: $1 (expected $2, got '$3')"; failures=$((failures + 1)); fi
}
cell() {  # csv file, term, column number
  awk -F, -v t="$2" -v c="$3" '$1 == t || $1 == "\"" t "\"" { print $c }' "$1"
}

# Terms named like K and n: N and K hold + and NA, so they are terms.
"$bin" importance --format csv "$tmp/npk.csv" >"$tmp/out" 2>"$tmp/err"
check "npk: read" 0 $?
for v in block N P K; do check_near "npk: importance of $v" "$(expected npk_$v)" "$(cell "$tmp/out" "$v" 2)"; done
check_text "npk: N said to be a term" "$tmp/err" "column 'N' holds '+' on line 2, as a term's column does"
"$bin" importance --format csv --n N "$tmp/npk.csv" >/dev/null 2>"$tmp/err"
check "npk: --n N reads + as n and is refused" 4 $?

"$bin" average --all --format csv "$tmp/swiss.csv" >"$tmp/out" 2>"$tmp/err"
check "swiss: read" 0 $?
check_near "swiss: K averaged as a term with its SE column" "$(expected swiss_K)" "$(cell "$tmp/out" K 4)"
check "swiss: no N_se term" "" "$(cell "$tmp/out" N_se 1)"

"$bin" table "$tmp/small-n.csv" >/dev/null 2>"$tmp/err"
check "AICc column with n <= K + 1: refused" 4 $?
check_text "AICc column with n <= K + 1: why" "$tmp/err" "small-n.csv:3: AICc needs n > K + 1, and here n = 10 with K = 11"

# coef(summary()): Estimate and Std. Error.
"$bin" average --all --format csv --criterion aicc --coefficients "$tmp/coef-summary.csv" "$tmp/tooth.csv" >"$tmp/out" 2>"$tmp/err"
check "coef(summary()): read" 0 $?
check_near "coef(summary()): suppVC" "$(expected tooth_suppVC)" "$(cell "$tmp/out" suppVC 4)"
check_near "coef(summary()): its SE" "$(expected tooth_suppVC_se)" "$(cell "$tmp/out" suppVC 5)"
"$bin" average --all --format csv --criterion qaicc --chat 2.5 --coefficients "$tmp/coef-summary.csv" \
  "$tmp/tooth.csv" >"$tmp/out" 2>"$tmp/err"
check_near "QAICc: SEs widened by sqrt(c)" "$(expected tooth_qaicc_se)" "$(cell "$tmp/out" suppVC 5)"
check_text "QAICc: said" "$tmp/err" "multiplied by sqrt(--chat) = 1.5811388300841898"
"$bin" average --all --coefficients "$tmp/coef-cut-short.csv" "$tmp/tooth.csv" >/dev/null 2>"$tmp/err"
check_text "a model without rows: warned" "$tmp/err" "model 'm4' (line 5) has no row in"
"$bin" average --all --strict --coefficients "$tmp/coef-cut-short.csv" "$tmp/tooth.csv" >/dev/null 2>&1
check "a model without rows: refused with --strict" 4 $?
cut -d, -f1-3 "$tmp/coef-summary.csv" >"$tmp/no-se.csv"
"$bin" average --all --coefficients "$tmp/no-se.csv" "$tmp/tooth.csv" >/dev/null 2>"$tmp/err"
check_text "no SE column: said" "$tmp/err" "no column of standard errors"

if [ -f "$tmp/tidy.csv" ]; then
  "$bin" average --all --format csv --coefficients "$tmp/tidy.csv" "$tmp/tooth.csv" >"$tmp/long" 2>/dev/null
  "$bin" average --all --format csv "$tmp/tidy-wide.csv" >"$tmp/wide" 2>"$tmp/err"
  check "tidy() spread wide: the averages of the long form" "" "$(diff "$tmp/long" "$tmp/wide")"
  "$bin" importance "$tmp/glance.csv" >/dev/null 2>"$tmp/err"
  check "glance(): no terms" 4 $?
  check_text "glance(): why" "$tmp/err" "no term columns beside the models"
fi
if [ -f "$tmp/aicctab.csv" ]; then
  "$bin" importance "$tmp/aicctab.csv" >/dev/null 2>"$tmp/err"
  check "AICctab: dAICc and dLogLik are no terms" 4 $?
fi

# Ties at the cut of --top: either row order keeps both.
"$bin" importance --top 1 --format csv "$tmp/tie-a.csv" >"$tmp/a" 2>"$tmp/err"
"$bin" importance --top 1 --format csv "$tmp/tie-b.csv" >"$tmp/b" 2>/dev/null
check "--top with a tie: the same in either order" "" "$(diff "$tmp/a" "$tmp/b")"
check "--top with a tie: wool in one of the two tied models" "0.5" "$(cell "$tmp/a" wool 2)"
check_text "--top with a tie: said" "$tmp/err" "tied models are kept together"

"$bin" table --format csv "$tmp/escaped.txt" >"$tmp/out" 2>"$tmp/err"
check "write.table's escapes: read" 0 $?
check "write.table's escapes: the name" '1,"say ""hi"", then"' "$(sed -n 2p "$tmp/out" | cut -d, -f1-3)"

finish drav_report_r_pitfalls
