#!/usr/bin/env bash
# Builds the fuzz targets with libFuzzer (cmake --preset fuzz: clang, address and
# undefined-behaviour sanitizers, coverage hooks in every library they reach) and runs each one
# for SECONDS seconds, starting from its seed corpus in fuzz/corpus/<name>.
#
#   bash tools/fuzz.sh [SECONDS] [TARGET...]      default: 60 seconds, every fuzz/fuzz_*.cpp
#
# Inputs the fuzzer finds interesting go to build/fuzz/corpus/<name> (the seeds are only read);
# a crash, timeout or sanitizer finding leaves its input in build/fuzz/findings/<name>/ and
# makes the script fail after the other targets have run. Copy such an input into the seed
# corpus with the fix, so that the replay test keeps it.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
[ $# -gt 0 ] && shift
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  for src in fuzz/fuzz_*.cpp; do
    targets+=("$(basename "$src" .cpp)")
  done
fi

cmake --preset fuzz >/dev/null
cmake --build build/fuzz -j"$(nproc)" --target "${targets[@]}"

export QT_QPA_PLATFORM=offscreen
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
  XDG_RUNTIME_DIR="$(mktemp -d)"
  export XDG_RUNTIME_DIR
fi
# The system's font library keeps caches to the end of the process; the project's own leaks
# are still reported.
export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp:print_suppressions=0"

failed=()
for t in "${targets[@]}"; do
  seeds="fuzz/corpus/${t#fuzz_}"
  work="build/fuzz/corpus/${t#fuzz_}"
  findings="build/fuzz/findings/${t#fuzz_}"
  mkdir -p "$work" "$findings"
  echo "== $t: ${seconds}s from $seeds"
  # -timeout: one input that takes this long is a finding (the readers refuse hostile files
  # quickly); -rss_limit_mb: so is one that needs this much memory.
  if ! "build/fuzz/bin/$t" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
      -print_final_stats=1 -artifact_prefix="$findings/" "$work" "$seeds" \
      >"build/fuzz/$t.log" 2>&1; then
    failed+=("$t")
    echo "   FAILED: see build/fuzz/$t.log and $findings/"
  fi
  grep -E "^stat::number_of_executed_units|^stat::peak_rss_mb" "build/fuzz/$t.log" |
    sed 's/^/   /' || true
done

if [ ${#failed[@]} -gt 0 ]; then
  echo "fuzz: ${#failed[@]} of ${#targets[@]} targets found something: ${failed[*]}"
  exit 1
fi
echo "fuzz: ${#targets[@]} targets ran ${seconds}s each without a finding"
