#!/usr/bin/env bash
# Builds everything (library, host, tests, benchmarks) and runs all tests headless.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/setup.sh
cmake --preset default -DKW_BUILD_TESTS=ON -DKW_BUILD_BENCH=ON >/dev/null
cmake --build build/default -j"$(nproc)"
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build/default -j"$(nproc)" --output-on-failure --timeout 300
