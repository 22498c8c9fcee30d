#!/usr/bin/env bash
# metainfo.sh FILE: AppStream finds no error and no warning in the metainfo, except that it names no homepage:
# there is none yet. AppStream 1.0 warns about that, 0.16 does not.
set -uo pipefail

report=$(appstreamcli validate --no-net --explain "$1" 2>&1) && exit 0
problems=$(sed -n 's/^[EW]: .* //p' <<<"$report")
[ "$problems" = url-homepage-missing ] && exit 0
echo "$report"
exit 1
