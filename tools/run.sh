#!/usr/bin/env bash
# Builds and starts the demo host. Without a display it renders the dialog gallery to PNG
# files, in English to gallery/en and in German to gallery/de; extra arguments go to kwhost.
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
  echo "run: no display; rendering the dialog gallery in English and German"
  ./build/default/bin/kwhost --gallery gallery/en --lang en
  ./build/default/bin/kwhost --gallery gallery/de --lang de
  echo "run: open the PNG files in gallery/en and gallery/de (host-window.png is the main window)"
  exit 0
fi
exec ./build/default/bin/kwhost "$@"
