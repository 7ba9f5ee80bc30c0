#!/usr/bin/env bash
# drav-report table on the files that R and spreadsheets really write. R fits
# five models to mtcars and writes the same table in each of the ways a
# researcher meets: write.csv, write.csv2, write.table with tabs, with
# semicolons, with row names as names and as it stands (blanks between
# the fields), a spreadsheet's CSV on Windows
# (Windows-1252, CR LF, a trailing separator), CSV UTF-8 with its
# byte-order mark and "Unicode text" (UTF-16). Every one must give the table
# that write.csv's gives, byte for byte. Then broom's glance(), whose df is
# not K, must be warned of. Skipped, and says so, where R is not installed.
set -u
bin=$1
source "$(dirname "$0")/checks.sh"
if ! command -v Rscript >/dev/null; then
  echo "SKIPPED: Rscript is not installed (apt-get install r-base-core); no real exports were read"
  exit 77
fi
export LC_ALL=C.UTF-8

cat >"$tmp/write.R" <<'R'
dir <- commandArgs(trailingOnly = TRUE)[1]
forms <- c("mpg ~ wt", "mpg ~ wt + hp", "mpg ~ wt + qsec", "mpg ~ hp", "mpg ~ wt * hp")
fits <- lapply(forms, function(f) lm(as.formula(f), data = mtcars))
# One name with a letter outside ASCII, as a French or German user writes.
names <- c("poids", "poids + puissance", "poids + accélération", "puissance", "poids × puissance")
d <- data.frame(model = names, logLik = sapply(fits, function(f) as.numeric(logLik(f))),
                df = sapply(fits, function(f) attr(logLik(f), "df")), nobs = sapply(fits, nobs))
out <- function(name) file.path(dir, name)
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
  write.csv(cbind(model = forms, g), out("glance.csv"), row.names = FALSE)
  # The remedy the warning asks for: K beside df.
  write.csv(cbind(model = forms, g, K = sapply(fits, function(f) attr(logLik(f), "df"))), out("glance-k.csv"),
            row.names = FALSE)
}
R
Rscript --vanilla "$tmp/write.R" "$tmp" || { echo "FAIL: R could not write the exports"; exit 1; }
# A trailing separator on every row, as spreadsheets leave it.
sed 's/\r$/,\r/' "$tmp/windows.csv" >"$tmp/trailing.csv"
# CSV UTF-8 with its byte-order mark, and Unicode text.
{ printf '\xEF\xBB\xBF'; cat "$tmp/write.csv"; } >"$tmp/bom.csv"
iconv -f UTF-8 -t UTF-16 "$tmp/tabs.txt" >"$tmp/utf16.txt"

"$bin" table --format csv "$tmp/write.csv" >"$tmp/expected" 2>"$tmp/err"
check "write.csv read" 0 $?
check "write.csv names" "1,poids × puissance" "$(sed -n 2p "$tmp/expected" | cut -d, -f1,2)"
for file in write.csv2 tabs.txt semicolons.csv row-names.txt write.table windows.csv trailing.csv bom.csv utf16.txt; do
  "$bin" table --format csv "$tmp/$file" >"$tmp/out" 2>"$tmp/err"
  check "$file: status" 0 $?
  check "$file: the table of write.csv" "" "$(diff "$tmp/expected" "$tmp/out")"
done
"$bin" table "$tmp/windows.csv" 2>"$tmp/err" >/dev/null
check_text "Windows-1252 is noted" "$tmp/err" "read as Windows-1252"

if [ -f "$tmp/glance.csv" ]; then
  # glance's df counts the slopes (1 for mpg ~ wt), its AIC the parameters (3).
  "$bin" table --criterion aicc "$tmp/glance.csv" >/dev/null 2>"$tmp/err"
  check "glance: read" 0 $?
  check_text "glance: df is not K" "$tmp/err" "column 'AIC' on line 2 gives 166.029428991876"
  check_text "glance: the K AIC implies" "$tmp/err" "which implies K = 3, but column 'df' gives 1"
  "$bin" table --strict "$tmp/glance.csv" >/dev/null 2>&1
  check "glance: refused with --strict" 4 $?
  "$bin" table --strict "$tmp/glance-k.csv" >/dev/null 2>"$tmp/err"
  check "glance with K: K is read, not df" "0 " "$? $(cat "$tmp/err")"
else
  echo "note: broom is not installed; its glance() export was not read"
fi

finish drav_report_real_exports
