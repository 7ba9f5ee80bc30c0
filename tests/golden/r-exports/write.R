# The R exports that r-exports.batch reads, as R 4.2.2 with broom and bbmle
# wrote them from R's own data sets:
#   Rscript --vanilla tests/golden/r-exports/write.R tests/golden/r-exports
# and then, as a spreadsheet or a shell leaves them:
#   sed 's/\r$/,\r/' windows.csv >trailing.csv
#   { printf '\xEF\xBB\xBF'; cat write.csv; } >bom.csv
#   iconv -f UTF-8 -t UTF-16 tabs.txt >utf16.txt
#   cut -d, -f1-3 coef-summary.csv >no-se.csv
# The numbers each should give, computed here in base R, are printed as it
# goes; r-exports.batch quotes them beside its goldens.
dir <- commandArgs(trailingOnly = TRUE)[1]
out <- function(name) file.path(dir, name)
expect <- function(name, value) cat(sprintf("%s %.12g\n", name, value))
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

# mtcars: one table written in each of the ways a researcher meets.
forms <- c("mpg ~ wt", "mpg ~ wt + hp", "mpg ~ wt + qsec", "mpg ~ hp", "mpg ~ wt * hp")
fits <- lapply(forms, function(f) lm(as.formula(f), data = mtcars))
# One name with a letter outside ASCII, as a French or German user writes.
names <- c("poids", "poids + puissance", "poids + accélération", "puissance", "poids × puissance")
d <- data.frame(model = names, logLik = sapply(fits, function(f) as.numeric(logLik(f))),
                df = sapply(fits, function(f) attr(logLik(f), "df")), nobs = sapply(fits, nobs))

write.csv(d, out("write.csv"))
write.csv2(d, out("write.csv2"), row.names = FALSE)
write.table(d, out("tabs.txt"), sep = "\t", row.names = FALSE)
write.table(d, out("semicolons.csv"), sep = ";", row.names = FALSE)
rownames(d) <- d$model
write.table(d[, -1], out("row-names.txt"), sep = "\t")
write.table(d[, -1], out("write.table"))
# Excel's CSV on Windows: Windows-1252 and CR LF.
write.csv(d, out("windows.csv"), row.names = FALSE, fileEncoding = "CP1252", eol = "\r\n")
if (requireNamespace("broom", quietly = TRUE)) {
  g <- do.call(rbind, lapply(fits, broom::glance))
  write.csv(cbind(model = forms, g), out("glance-mtcars.csv"), row.names = FALSE)
  # The remedy the warning asks for: K beside df.
  write.csv(cbind(model = forms, g, K = sapply(fits, function(f) attr(logLik(f), "df"))), out("glance-mtcars-k.csv"),
            row.names = FALSE)
}
