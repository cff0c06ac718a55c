#!/usr/bin/env bash
# Builds everything (library, host, tests, benchmarks) and runs all tests headless.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/setup.sh
cmake --preset default -DKW_BUILD_TESTS=ON -DKW_BUILD_BENCH=ON >/dev/null
# Test discovery runs the test programs while building: headless, with a runtime folder of
# their own so that Qt has nothing to complain about.
export QT_QPA_PLATFORM=offscreen
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
  XDG_RUNTIME_DIR="$(mktemp -d)"
  export XDG_RUNTIME_DIR
fi
cmake --build build/default -j"$(nproc)"
ctest --test-dir build/default -j"$(nproc)" --output-on-failure --timeout 300
