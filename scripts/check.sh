#!/usr/bin/env bash
# The longer check, after scripts/test.sh has built and passed: the
# benchmarks still run, every fuzz target for a minute, the whole suite
# again under AddressSanitizer and UndefinedBehaviorSanitizer, and the
# Debian package built, installed, tried and removed.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
# Their figures are read by hand; here they must only still run.
./build/bench/bench_analysis --benchmark_min_time=0.01 >/dev/null 2>&1
./build/bench/bench_selection --benchmark_min_time=0.01 >/dev/null 2>&1
RUNS=1 bash bench/formats_and_cores.sh build 40000 >/dev/null
bash scripts/fuzz.sh "${DRAV_FUZZ_SECONDS:-60}"
bash scripts/sanitize.sh >build-asan.log 2>&1 || { tail -n 80 build-asan.log; echo "sanitizer run failed"; exit 1; }
echo "sanitizer run: $(grep -E 'tests passed' build-asan.log)"
bash scripts/package-check.sh 2>/dev/null
