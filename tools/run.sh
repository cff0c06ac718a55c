#!/usr/bin/env bash
# Builds and starts the demo host. Without a display it renders the dialog gallery to PNG
# files (default folder: gallery/); extra arguments go to kwhost.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/setup.sh
cmake --preset default -DKW_BUILD_TESTS=OFF -DKW_BUILD_BENCH=OFF >/dev/null
cmake --build build/default --target kwhost -j"$(nproc)"
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && [ $# -eq 0 ]; then
  exec ./build/default/bin/kwhost --gallery gallery
fi
exec ./build/default/bin/kwhost "$@"
