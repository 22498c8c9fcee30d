# shellcheck shell=bash
# Sourced by the scripts for update feeds. feed_tool ARGUMENT…: builds stackreel-feed and runs it. STACKREEL_BUILD sets
# the build folder, by default build/release.
feed_tool() {
  local root build log
  root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
  build=${STACKREEL_BUILD:-$root/build/release}
  log=$build/feed-tool.log
  mkdir -p "$build"
  if ! { { [ -f "$build/CMakeCache.txt" ] || cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
             -DSTACKREEL_TESTS=OFF -DSTACKREEL_BENCHMARKS=OFF -DSTACKREEL_PLAYER=OFF -DSTACKREEL_WINDOW=OFF; } &&
         cmake --build "$build" --target stackreel-feed; } >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    return 1
  fi
  "$build/bin/stackreel-feed" "$@"
}
