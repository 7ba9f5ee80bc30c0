#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
# The benchmarks must at least still run; their figures are read by hand.
./build/bench/bench_analysis --benchmark_min_time=0.01 >/dev/null 2>&1
./build/bench/bench_selection --benchmark_min_time=0.01 >/dev/null 2>&1
# Every fuzz target for a minute, then the whole suite under AddressSanitizer
# and UndefinedBehaviorSanitizer.
bash scripts/fuzz.sh "${DRAV_FUZZ_SECONDS:-60}"
bash scripts/sanitize.sh >build-asan.log 2>&1 || { tail -n 80 build-asan.log; echo "sanitizer run failed"; exit 1; }
echo "sanitizer run: $(grep -E 'tests passed' build-asan.log)"
# The Debian package installs, works and removes cleanly.
bash scripts/package-check.sh 2>/dev/null
ctest --test-dir build --output-on-failure --parallel "$(nproc)"
