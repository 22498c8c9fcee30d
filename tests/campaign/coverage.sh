#!/usr/bin/env bash
# coverage.sh: prints which lines of framing/, media/ and model/ the tests of these folders do not run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
# shellcheck source=scripts/packages.sh
. scripts/packages.sh
require_packages gcovr
programs=(framing-tests media-facts-tests media-process-tests source-facts-tests model-tests model-tool-tests)
folder=build/coverage
mkdir -p "$folder"
cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O0 --coverage" -DSTACKREEL_TESTS=ON \
  >"$folder/configure.log"
ninja -C "$folder" "${programs[@]}" >"$folder/build.log"
find "$folder" -name '*.gcda' -delete
for program in "${programs[@]}"; do
  QT_QPA_PLATFORM=offscreen "$folder/tests/$program" --gtest_brief=1 || echo "$program has failed" >&2
done
gcovr --root . --object-directory "$folder" --filter 'framing/' --filter 'media/' --filter 'model/' \
  --exclude-unreachable-branches --exclude-throw-branches --txt "$folder/report.txt" --print-summary
cat "$folder/report.txt"
