#!/usr/bin/env bash
# Configures and builds Drav in build/ (Release, warnings as errors).
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release -DDRAV_WERROR=ON >/dev/null
cmake --build build --parallel "$(nproc)"
