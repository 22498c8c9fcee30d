#!/usr/bin/env bash
# man_page.sh PAGE…: checks that each page renders without a warning.
set -uo pipefail
status=0
for page in "$@"; do
  warnings=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null) || status=1
  lines=$(LC_ALL=C.UTF-8 man -l "$page" | wc -l)
  [ "$lines" -gt 10 ] || { echo "$page has $lines lines"; status=1; }
  [ -z "$warnings" ] || { echo "$warnings"; status=1; }
done
exit $status
