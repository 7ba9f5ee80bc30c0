#!/usr/bin/env bash
# Installs what is missing, builds, and starts Drav on the bundled example.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
exec ./build/tools/drav-report 5 examples/five-models.txt
