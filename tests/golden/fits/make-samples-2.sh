#!/bin/bash
# Writes the sample outputs of MARK, Stata, SAS and SPSS that the readers'
# unit tests read, and beside each the numbers R computes for the same fits
# (NAME.expected), so that the tests hold every number a reader yields to R
# without needing R themselves. Run it again after changing a generator and
# commit what it writes. It needs R with MASS, sandwich, ggplot2 (for the
# diamonds data) and lme4; the iteration counts it prints may differ between
# R versions, the numbers the readers yield do not.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
for program in mark stata sas spss; do
  Rscript --vanilla "$here/$program-samples.R" "$here"
done
