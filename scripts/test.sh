#!/usr/bin/env bash
# Installs what is missing, builds, and runs the test suite: a few minutes.
# The longer checks (fuzzing, sanitizers, the package) are scripts/check.sh.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
ctest --test-dir build --output-on-failure --parallel "$(nproc)"
