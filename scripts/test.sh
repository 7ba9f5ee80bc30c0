#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
# The benchmarks must at least still run; their figures are read by hand.
./build/bench/bench_analysis --benchmark_min_time=0.01 >/dev/null 2>&1
ctest --test-dir build --output-on-failure --parallel "$(nproc)"
