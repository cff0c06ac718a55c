#!/usr/bin/env bash
# Builds and starts the demo host. Without a display it renders the dialog gallery to PNG
# files (default folder: gallery/); extra arguments go to kwhost.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/setup.sh
# The build talks only when it fails; its full output stays in the log.
log=build/run-build.log
mkdir -p build
echo "run: building kwhost (output in $log)"
if ! { cmake --preset default -DKW_BUILD_TESTS=OFF -DKW_BUILD_BENCH=OFF &&
       cmake --build build/default --target kwhost -j"$(nproc)"; } >"$log" 2>&1; then
  tail -n 40 "$log"
  echo "run: the build failed; see $log"
  exit 1
fi
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && [ $# -eq 0 ]; then
  exec ./build/default/bin/kwhost --gallery gallery
fi
exec ./build/default/bin/kwhost "$@"
