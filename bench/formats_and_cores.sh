#!/usr/bin/env bash
# drav-report on a million models, whole process: each output format beside
# csv, and each run on one core (taskset -c 0) beside the same run free to
# use two; importance and average --all on a million models of twelve terms
# the same way. The output is the same byte for byte either way (checked
# here too). Goals: every format within 1.2x of csv; two cores at half the
# time of one. Wall time is the best of RUNS runs (3 by default): on a busy
# machine the best run is the one least disturbed. User+system time is
# printed too, which a busy machine disturbs less.
#   bench/formats_and_cores.sh [BUILD_DIR] [MODELS]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
models=${2:-1000000}
runs=${RUNS:-3}
bin=$PWD/$build/tools/drav-report
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

awk -v m="$models" 'BEGIN { srand(7); print "model,loglik,k,n"
  for (i = 1; i <= m; i++) printf "model%07d,%.6f,%d,500\n", i, -1000 - rand() * 200, 2 + int(rand() * 10) }' >"$tmp/models.csv"
# Twelve terms, each model without two of them, with their SEs.
awk -v m="$models" 'BEGIN { srand(11); h = "model,loglik,k,n"
  for (t = 1; t <= 12; t++) h = h ",x" t ",x" t "_se"; print h
  for (i = 1; i <= m; i++) {
    a = 1 + int(rand() * 12); b = 1 + int(rand() * 11); if (b >= a) b++
    row = sprintf("model%07d,%.6f,11,500", i, -1000 - rand() * 30)
    for (t = 1; t <= 12; t++) row = row ((t == a || t == b) ? ",NA,NA" : sprintf(",%.6f,%.6f", t / 10 + rand() - 0.5, 0.05 + rand() / 10))
    print row } }' >"$tmp/wide.csv"

# Best wall and CPU seconds of $runs runs of a command, its output kept.
best() {  # output file, command...
  local out=$1 wall=999 cpu=999
  shift
  for _ in $(seq "$runs"); do
    /usr/bin/time -f '%e %U %S' -o "$tmp/time" "$@" >"$out"
    read -r w u s <"$tmp/time"
    wall=$(awk -v a="$wall" -v b="$w" 'BEGIN { print (b < a ? b : a) }')
    cpu=$(awk -v a="$cpu" -v b="$u" -v c="$s" 'BEGIN { print (b + c < a ? b + c : a) }')
  done
  echo "$wall $cpu"
}

echo "$models models; cores this process may use: $(nproc)"
printf '%-34s %9s %9s %9s %9s %7s\n' run "1 core s" "cpu s" "2 cores s" "cpu s" "ratio"
for format in csv text markdown latex json tsv; do
  read -r one onecpu < <(best "$tmp/one" taskset -c 0 "$bin" table --format "$format" "$tmp/models.csv")
  read -r two twocpu < <(best "$tmp/two" "$bin" table --format "$format" "$tmp/models.csv")
  cmp -s "$tmp/one" "$tmp/two" || { echo "table --format $format: one core and two differ"; exit 1; }
  [ "$format" = csv ] && csv_one=$one csv_two=$two
  printf '%-34s %9.2f %9.2f %9.2f %9.2f %7.2f   (x csv: %.2f, %.2f)\n' "table --format $format" "$one" "$onecpu" \
    "$two" "$twocpu" "$(awk -v a="$two" -v b="$one" 'BEGIN { print a / b }')" \
    "$(awk -v a="$one" -v b="$csv_one" 'BEGIN { print a / b }')" "$(awk -v a="$two" -v b="$csv_two" 'BEGIN { print a / b }')"
done
for run in "importance" "average --all"; do
  # shellcheck disable=SC2086
  read -r one onecpu < <(best "$tmp/one" taskset -c 0 "$bin" $run --format csv "$tmp/wide.csv")
  # shellcheck disable=SC2086
  read -r two twocpu < <(best "$tmp/two" "$bin" $run --format csv "$tmp/wide.csv")
  cmp -s "$tmp/one" "$tmp/two" || { echo "$run: one core and two differ"; exit 1; }
  printf '%-34s %9.2f %9.2f %9.2f %9.2f %7.2f\n' "$run (12 terms)" "$one" "$onecpu" "$two" "$twocpu" \
    "$(awk -v a="$two" -v b="$one" 'BEGIN { print a / b }')"
done
