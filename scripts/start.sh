#!/usr/bin/env bash
# Installs what is missing, builds, and starts Drav.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
exec ./build/drav
