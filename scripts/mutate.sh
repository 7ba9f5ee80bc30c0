#!/usr/bin/env bash
# Mutation check: applies each mutant of mutation/mutants.tsv, one at a time,
# to a scratch copy of the committed tree, rebuilds incrementally, runs the
# suite and counts the mutant killed when a test fails (the suite stops at
# that test: the rest could not save it). Prints the score and the
# survivors. Not part of CI: a mutant takes about twenty seconds.
#   scripts/mutate.sh [PATTERN]     only mutants whose file and text match
#                                   PATTERN, an extended regular expression
# A mutant line is: file <TAB> text as it stands <TAB> text after the edit.
# "\n", "\t" and "\\" stand for a line end, a tab and a backslash. The
# text must stand exactly once in the file; a mutant whose text is gone
# (the code moved on) is reported as stale, and one that does not build as
# stillborn; neither counts.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
pattern=${1:-}
scratch=$(mktemp -d "${TMPDIR:-/tmp}/drav-mutate.XXXXXX")
trap 'rm -rf "$scratch"' EXIT
git archive HEAD | tar -x -C "$scratch"
cmake -S "$scratch" -B "$scratch/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DDRAV_BUILD_BENCH=OFF >/dev/null
cmake --build "$scratch/build" --parallel "$(nproc)" >/dev/null
# The end-to-end run and the cross-check against R add minutes and no kills
# that the suites do not make; fault tests stay. Start-up (app/) is reached
# only by the end-to-end run, so its mutants get that run too.
exclude='desktop_run|versus_r'
# Unmutated, the copy must pass: a test that fails in it whatever the
# mutant (a path or a permission of the copy) would count every mutant
# killed.
if ! ctest --test-dir "$scratch/build" --parallel "$(nproc)" -E "$exclude" --timeout 120 >"$scratch/ctest.log" 2>&1; then
  grep -E '\((Failed|Timeout|SEGFAULT)' "$scratch/ctest.log" || true
  echo "the suite fails on the unmutated copy in $scratch: no mutant can be judged" >&2
  exit 1
fi

killed=0 survived=0 stale=0 stillborn=0
survivors=()
while IFS=$'\t' read -r -u 3 file before after; do
  [[ -z "$file" || "$file" == \#* ]] && continue
  [[ -n "$pattern" && ! "$file $before" =~ $pattern ]] && continue
  target="$scratch/$file"
  [ -f "$target" ] || { echo "STALE      $file: no such file"; stale=$((stale + 1)); continue; }
  cp -p "$target" "$target.orig"
  # "\n", "\t" and "\\" in the list stand for a line end, a tab and a backslash.
  if ! python3 - "$target" "$before" "$after" <<'PY'
import sys
path, before, after = sys.argv[1:]
unescape = lambda t: t.replace("\\\\", "\0").replace("\\n", "\n").replace("\\t", "\t").replace("\0", "\\")
before, after = unescape(before), unescape(after)
text = open(path, encoding="utf-8").read()
if text.count(before) != 1:
    sys.exit(3)
open(path, "w", encoding="utf-8").write(text.replace(before, after, 1))
PY
  then
    rm -f "$target.orig"
    echo "STALE      $file: $before"; stale=$((stale + 1)); continue
  fi
  if ! cmake --build "$scratch/build" --parallel "$(nproc)" >/dev/null 2>&1; then
    echo "STILLBORN  $file: $before -> $after"; stillborn=$((stillborn + 1))
  elif ctest --test-dir "$scratch/build" --parallel "$(nproc)" -E "$([[ $file == app/* ]] && echo versus_r || echo "$exclude")" \
         --stop-on-failure --timeout 120 >"$scratch/ctest.log" 2>&1; then
    echo "SURVIVED   $file: $before -> $after"; survived=$((survived + 1)); survivors+=("$file: $before -> $after")
  else
    # The test that failed, so that a kill by a test that has nothing to do
    # with the mutant (a timeout on a loaded machine) can be seen.
    by=$(grep -m1 -oE '[0-9]+ - [^ ]+ \((Failed|Timeout|SEGFAULT|Subprocess aborted|Child aborted)\)' "$scratch/ctest.log" || true)
    echo "killed     $file: $before -> $after  [${by:-?}]"; killed=$((killed + 1))
  fi
  mv "$target.orig" "$target"
  touch "$target"
done 3<"$scratch/mutation/mutants.tsv"
cmake --build "$scratch/build" --parallel "$(nproc)" >/dev/null 2>&1 || true

total=$((killed + survived))
echo
echo "mutation score: $killed of $total killed ($(( total == 0 ? 0 : 100 * killed / total )) %); $stale stale, $stillborn stillborn"
for s in "${survivors[@]}"; do echo "  survivor: $s"; done
