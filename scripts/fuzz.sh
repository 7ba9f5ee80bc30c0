#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (AddressSanitizer and
# UndefinedBehaviorSanitizer on) and runs each for the given number of
# seconds, starting from the seed corpus in fuzz/corpus. Findings are saved
# in build-fuzz/findings; the seed corpus itself is never changed.
#   scripts/fuzz.sh [SECONDS] [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(fuzz_val fuzz_format fuzz_model_report fuzz_property_sheet fuzz_selection fuzz_fits)

CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DDRAV_FUZZ=ON \
  -DDRAV_SANITIZE=address,undefined -DDRAV_BUILD_GUI=OFF -DDRAV_BUILD_TESTS=OFF -DDRAV_BUILD_BENCH=OFF \
  -DDRAV_WERROR=ON >/dev/null
cmake --build build-fuzz --parallel "$(nproc)" --target "${targets[@]}" >/dev/null

mkdir -p build-fuzz/findings
status=0
for target in "${targets[@]}"; do
  work=$(mktemp -d)
  cp -r "fuzz/corpus/$target/." "$work/"
  log="build-fuzz/findings/$target.log"
  if ! "build-fuzz/fuzz/$target" "$work" -max_total_time="$seconds" -print_final_stats=1 \
       -artifact_prefix="build-fuzz/findings/$target-" >"$log" 2>&1; then
    echo "$target: FINDING, see $log"
    tail -n 30 "$log"
    status=1
  fi
  runs=$(grep -m1 'stat::number_of_executed_units' "$log" | awk '{print $2}')
  echo "$target: ${runs:-?} executions in ${seconds}s"
  rm -rf "$work"
done
exit $status
