#!/usr/bin/env bash
# drav-report fits and table --fits as a user runs them on the sample
# outputs: the listing of every sample and a ranking across programs, each
# against its golden (DRAV_UPDATE_GOLDENS=1 writes them anew; read the diff
# line by line), then the refusals and warnings that keep a ranking honest.
set -u
bin=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
src=$2
source "$(dirname "$0")/checks.sh"
golden=$src/tests/golden/fits
cd "$golden/samples" || exit 1
samples=(r/*.Rout r/*.txt r/*.md lavaan/*.txt lavaan/*.md mplus/*.out statsmodels/*.txt statsmodels/*.ipynb
  mark/mark-cjs.out mark/mark-two-counts.out stata/*.log sas/*.lst spss/*.txt)

golden_case() {  # name, golden file, arguments...
  local name=$1 file=$2
  shift 2
  "$bin" "$@" >"$tmp/out" 2>"$tmp/err"
  check "$name: status" 0 $?
  if [ "${DRAV_UPDATE_GOLDENS:-}" = 1 ]; then cp "$tmp/out" "$golden/$file"; cp "$tmp/err" "$golden/$file.stderr"; fi
  check "$name: as the golden" "" "$(diff "$golden/$file" "$tmp/out")"
  check "$name: messages as the golden" "" "$(diff "$golden/$file.stderr" "$tmp/err")"
}
golden_case "every sample listed" fits.csv fits --verbose --format csv "${samples[@]}"
golden_case "a ranking across programs" table-across-programs.txt table --fits --criterion aic \
  r/knitted.md r/loglik-only.txt statsmodels/logit.txt statsmodels/ols.txt
golden_case "lavaan beside Mplus" table-sem.txt table --fits lavaan/two-models.txt mplus/cfa-ml.out
# MARK's -2logL leaves out its constants: beside R's models every
# difference is warned of (kind, n, MARK's count of K).
golden_case "MARK beside R" table-mark-beside-r.txt table --fits --criterion aic mark/mark-cjs.out r/knitted.md
golden_case "Stata's stored models" table-stata.txt table --fits stata/stata-logit.log
# One sleepstudy fit as SAS and SPSS print it, each cut from its file: the
# same model, which SAS's one decimal cannot tell from SPSS's three.
mkdir "$tmp/same-fit"
awk '/Random intercepts, ML/ {print prev; p = 1} p && /^\f/ {exit} p {print} {prev = $0}' sas/sas-listing.lst \
  >"$tmp/same-fit/sleep-ml.lst"
sed -n "/^TITLE 'Sleep study ML'/,\$p" spss/spss-mixed.txt >"$tmp/same-fit/sleep-ml.txt"
cd "$tmp/same-fit" || exit 1
golden_case "SAS beside SPSS" table-sas-beside-spss.txt table --fits sleep-ml.lst sleep-ml.txt
cd "$golden/samples" || exit 1

printf 'poisson spray\nnull\n' >"$tmp/names"
printf 'PK\003\004%026d%s' 0 outputViewer0000000001.xml >"$tmp/output.spv"
printf '{smcl}\n{com}{sf}{ul off}{txt}\n' >"$tmp/session.smcl"
run_cases "$bin" <<CASES
a quoted glob is expanded|0|Three latent classes|fits 'mplus/lca-*.out'
names from a file|0|poisson spray|table --fits --model-names $tmp/names r/knitted.md
names one short|4|2 names for 3 models|fits --model-names $tmp/names r/knitted.md r/loglik-only.txt
n for logLik() alone|0|-182.295  6  72|fits --n 72 r/loglik-only.txt
AICc needs n|4|AICc needs n, which this output does not print; --n N gives it|table --fits --criterion aicc r/loglik-only.txt
--n must be a number|2|--n with --fits is the number of observations|table --fits --n rows r/loglik-only.txt
REML beside ML refused|4|a REML likelihood leaves out the fixed effects|table --fits r/lme4-ml.txt r/lme4-reml.txt
REML among REML ranked|0|(0 + Days|table --fits r/lme4-reml.txt
no likelihood refused|4|the WLSMV estimator gives no maximised likelihood|table --fits mplus/cfa-ml.out mplus/wlsmv.out
quasi family refused|4|quasipoisson family has no likelihood|table --fits r/glm-transcript.Rout
different n warned of|0|fitted to different numbers of observations|table --fits lavaan/groups-missing.txt lavaan/two-models.txt
different n refused under --strict|4|(--strict)|table --fits --strict lavaan/groups-missing.txt lavaan/two-models.txt
AIC counting warned of|0|count parameters differently|table --fits statsmodels/ols.txt r/knitted.md
coarse digits noted|0|statsmodels prints log-likelihoods to 4 or 5 significant digits|table --fits statsmodels/ols.txt r/knitted.md
MARK's two counts warned of|0|MARK's two counts of estimable parameters disagree (gap method 7, threshold method 8); it used K = 7|fits mark/mark-two-counts.out
aborted MARK run refused|4|mark-aborted.out:59: model {Phi(t)p(.)}: MARK never printed its 'Number of Estimated Parameters'|fits mark/mark-aborted.out
Stata pseudolikelihood listed|0|,pseudo,"Stata fitted it with robust|fits --format csv stata/stata-robust.log
Stata pseudolikelihood refused|4|stata-robust.log:1: model 'stata-robust' cannot be ranked: Stata fitted it with robust, cluster or survey weights|table --fits stata/stata-robust.log stata/stata-logit.log
SMCL log refused|4|session.smcl:1: this is a SMCL log; Drav reads Stata's text logs: 'translate session.smcl session.log'|fits $tmp/session.smcl
regress's AIC 2 below noted|0|the printed AIC 164.0294 of 'stata-regress' (Stata, stata/stata-regress.log:1) is 2 below -2 logLik + 2K|table --fits stata/stata-regress.log r/knitted.md
SAS REML beside ML refused|4|a REML likelihood leaves out the fixed effects|table --fits sas/sas-listing.lst
SAS GEE refused|4|sas-gee.lst:3: model 'Poisson GEE: warp breaks by loom' cannot be ranked: a GEE (REPEATED) has no likelihood|table --fits sas/sas-gee.lst
SPSS n from the BIC|0|n = 178 from BIC = -2RLL + K ln(n - p), plus the 2 fixed effects|fits --verbose --format csv spss/spss-mixed.txt
SPSS viewer file refused|4|output.spv: an SPSS viewer file is binary; Drav reads the viewer's text. In the Output Viewer choose File > Export|fits $tmp/output.spv
unknown program refused|4|not the printed output of a program Drav reads (Mplus, lavaan, statsmodels, MARK, Stata, SAS, SPSS, R)|fits $src/tests/golden/selection/awkward.csv
missing file|1|nope.out: No such file or directory|fits nope.out
svg has nothing to draw|2|--format svg draws a ranking|fits --format svg r/knitted.md
fits needs a file|2|no FILE given|fits
--fits only for table|2|unknown option --fits|importance --fits r/knitted.md
CASES

"$bin" fits - <r/knitted.md >"$tmp/out" 2>&1
check_text "standard input" "$tmp/out" "count ~ 1"
# A printed AIC that disagrees with logLik and K is warned of, as a table's.
sed 's/7517.490/7527.490/' lavaan/two-models.txt >"$tmp/changed.txt"
"$bin" table --fits "$tmp/changed.txt" >/dev/null 2>"$tmp/err"
check_text "disagreeing AIC" "$tmp/err" "the printed AIC 7527.49 of 'changed (1)' (lavaan, $tmp/changed.txt:1) implies K = 26"
sed 's/16.05911/18.05911/' stata/stata-logit.log >"$tmp/changed.log"
"$bin" table --fits "$tmp/changed.log" >/dev/null 2>"$tmp/err"
check_text "disagreeing AIC in a Stata log" "$tmp/err" \
  "the printed AIC 18.05911 of 'weight_and_horsepower' (Stata, $tmp/changed.log:37) implies K = 4, but K = 3 was read"

finish drav_report_fits
