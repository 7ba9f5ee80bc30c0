#!/usr/bin/env bash
# drav-report on a machine at its limits, through the faults of
# thread_faults.c: where no thread can be started it works on one and writes
# what two write; where memory runs out on a thread that reads ahead or
# helps, it ends with the status for memory, never hangs, never aborts.
# Everything it says, on standard error too, is the same on one core and two.
#   drav_report_threads.sh DRAV_REPORT FAULTS_LIBRARY
set -u
bin=$1
faults=$2
source "$(dirname "$0")/checks.sh"
if [ "$(nproc)" -lt 2 ]; then
  echo "drav_report_threads: one core; the second thread is never started here"
  exit 77
fi

# Enough models for many batches read ahead and many runs for the helper.
awk 'BEGIN { print "model,loglik,k,n,x,x_se"
             for (i = 1; i <= 300000; i++) printf "m%d,%d,%d,500,%d.5,0.25\n", i, -1000 - i % 97, 2 + i % 5, i % 7 }' \
  >"$tmp/models.csv"
"$bin" table "$tmp/models.csv" >"$tmp/expected" 2>"$tmp/expected-err"
check "the table: status" 0 $?

# No thread to be had: the same bytes as with two, on every form that
# shares its work.
for form in "table" "table --format csv" "importance" "average --all"; do
  # shellcheck disable=SC2086
  "$bin" $form "$tmp/models.csv" >"$tmp/two" 2>"$tmp/two-err"
  # shellcheck disable=SC2086
  LD_PRELOAD=$faults DRAV_NO_THREADS=1 timeout 60 "$bin" $form "$tmp/models.csv" >"$tmp/one" 2>"$tmp/one-err"
  check "$form without threads: status" 0 $?
  check "$form without threads: output" "" "$(cmp "$tmp/two" "$tmp/one" 2>&1)"
  check "$form without threads: messages" "" "$(cmp "$tmp/two-err" "$tmp/one-err" 2>&1)"
done
printf 'model,AIC\na,1\nb,2\n' >"$tmp/three.csv"
LD_PRELOAD=$faults DRAV_NO_THREADS=1 "$bin" table "$tmp/three.csv" >"$tmp/one" 2>"$tmp/one-err"
check "three lines without threads: status" 0 $?

# Memory that runs out on the thread that reads ahead (the first started)
# and on the one that makes models beside the main thread (the second).
for thread in 1 2; do
  LD_PRELOAD=$faults DRAV_FAIL_THREAD=$thread DRAV_FAIL_BYTES=65536 timeout 60 "$bin" table "$tmp/models.csv" \
    >/dev/null 2>"$tmp/err"
  check "memory gone on thread $thread: status" 6 $?
  check "memory gone on thread $thread: told" "drav-report: out of memory: the input is too large for this machine's memory" \
    "$(cat "$tmp/err")"
done

# What is said is the same on one core and two: a note the reading thread
# finds past the first fault (a Windows-1252 byte near the end) is not told.
awk 'BEGIN { print "model,loglik,k"
             for (i = 1; i <= 40000; i++) {
               if (i == 20000) print "m" i ",abc,3"
               else if (i == 39990) print "caf\351,-1,3"
               else printf "m%d-a-name-long-enough-to-fill-the-first-read,%d,3\n", i, -1000 - i % 50 } }' \
  >"$tmp/late.csv"
# A note of a record a few records after the fault, in the run of records
# a helper reads at once (a quote escaped by a backslash; the encoding's
# note would not do: it is told of the whole first read, before the fault,
# on one core too).
sed '20004s/^m20003-a[^,]*/"m \\"20003\\" x"/' "$tmp/late.csv" >"$tmp/near.csv"
for file in late near; do
  taskset -c 0 "$bin" table "$tmp/$file.csv" >/dev/null 2>"$tmp/one-err"
  check "$file note, one core: status" 4 $?
  for run in 1 2 3 4 5 6 7 8; do
    "$bin" table "$tmp/$file.csv" >/dev/null 2>"$tmp/two-err"
    check "$file note, two cores, run $run: status" 4 $?
    check "$file note, two cores, run $run: messages" "" "$(cmp "$tmp/one-err" "$tmp/two-err" 2>&1)"
  done
done
# A fault the reading thread finds deep in (a quote never closed) ends the
# run as on one core: the same refusal, not a table of what came before.
awk 'BEGIN { print "model,AIC"; for (i = 1; i <= 60000; i++) print (i == 50000 ? "\"m" i : "m" i) "," i }' \
  >"$tmp/quote.csv"
taskset -c 0 "$bin" table "$tmp/quote.csv" >/dev/null 2>"$tmp/one-err"
check "unclosed quote, one core: status" 4 $?
"$bin" table "$tmp/quote.csv" >/dev/null 2>"$tmp/two-err"
check "unclosed quote, two cores: status" 4 $?
check "unclosed quote, two cores: messages" "" "$(cmp "$tmp/one-err" "$tmp/two-err" 2>&1)"
# The same in a coefficients file in long form, which the main thread reads
# record by record while a second reads ahead: the fault is told, not taken
# for the file's end (models without rows, "cut short?").
awk 'BEGIN { print "model,AIC"; for (i = 1; i <= 30000; i++) print "m" i "," 1000 + i % 101 }' >"$tmp/cm.csv"
awk 'BEGIN { print "model,term,estimate,std.error"
             for (i = 1; i <= 30000; i++) { print "m" i ",x," i % 7 ".5,0.25"; print (i == 25000 ? "\"m" i : "m" i) ",z,1.5,0.5" } }' \
  >"$tmp/cc.csv"
taskset -c 0 "$bin" importance --coefficients "$tmp/cc.csv" "$tmp/cm.csv" >/dev/null 2>"$tmp/one-err"
check "unclosed quote in coefficients, one core: status" 4 $?
"$bin" importance --coefficients "$tmp/cc.csv" "$tmp/cm.csv" >/dev/null 2>"$tmp/two-err"
check "unclosed quote in coefficients, two cores: status" 4 $?
check "unclosed quote in coefficients, two cores: messages" "" "$(cmp "$tmp/one-err" "$tmp/two-err" 2>&1)"
# Criteria below and above zero (an AIC of a density may be negative) in a
# table large enough that two threads sort it: the best is the lowest.
awk 'BEGIN { print "model,AIC"
             for (i = 1; i <= 300000; i++) print "m" i "," (i == 77777 ? "-100.75" : i % 2 ? "-100.5" : "100.5") }' \
  >"$tmp/fractions.csv"
check "fractions on two cores: the best" "1,m77777" "$("$bin" table --format csv "$tmp/fractions.csv" | sed -n 2p | cut -d, -f1-2)"

# Quotes escaped by a backslash, as write.table writes them, first found
# deep in: the records after the first are split the same way on two cores.
awk 'BEGIN { print "model,AIC"
             for (i = 1; i <= 60000; i++) print (i == 50000 || i == 50003 ? "\"m \\\"" i "\\\" x\"" : "m" i) "," i }' \
  >"$tmp/escaped.csv"
taskset -c 0 "$bin" table --format csv "$tmp/escaped.csv" >"$tmp/one" 2>"$tmp/one-err"
check "escaped quotes, one core: status" 0 $?
"$bin" table --format csv "$tmp/escaped.csv" >"$tmp/two" 2>"$tmp/two-err"
check "escaped quotes, two cores: output" "" "$(cmp "$tmp/one" "$tmp/two" 2>&1)"
check "escaped quotes, two cores: messages" "" "$(cmp "$tmp/one-err" "$tmp/two-err" 2>&1)"
finish drav_report_threads
