#!/usr/bin/env bash
# metainfo.sh SOURCE-FOLDER: checks the metainfo of a build with and without an address of the screenshots. AppStream must
# find no error and no warning, except that it names no homepage: there is none yet. AppStream 1.0 warns about that, 0.16
# does not.
set -uo pipefail
packaging=$1/packaging
source=$(echo "$packaging"/linux/*.metainfo.xml)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
status=0

build() { # ADDRESS: writes metainfo.xml
  rm -f "$scratch/metainfo.xml"
  cmake "-DSOURCE=$source" "-DOUTPUT=$scratch/metainfo.xml" "-DADDRESS=$1" -P "$packaging/Metainfo.cmake" 2>"$scratch/log"
}

is_valid() {
  local report
  report=$(appstreamcli validate --no-net --explain "$scratch/metainfo.xml" 2>&1) && return
  [ "$(sed -n 's/^[EW]: .* //p' <<<"$report")" = url-homepage-missing ] && return
  echo "$report"
  status=1
}

addresses() { sed -n 's|.*<image.*>\(.*\)</image>.*|\1|p' "$scratch/metainfo.xml"; }
fail() { echo "$*"; status=1; }

build "" || fail "without an address: $(cat "$scratch/log")"
is_valid
! grep -qi screenshot "$scratch/metainfo.xml" || fail "there are screenshots without an address"

build https://example.org/pictures || fail "with an address: $(cat "$scratch/log")"
is_valid
diff <(addresses | LC_ALL=C sort) <(cd "$packaging/screenshots" && printf 'https://example.org/pictures/%s\n' *.png) ||
  fail "the screenshots are not those in packaging/screenshots"
while read -r size file; do
  [ "$(identify -format %wx%h "$packaging/screenshots/$file")" = "$size" ] || fail "$file is not of the size $size"
done < <(sed -n 's|.*width="\([0-9]*\)" height="\([0-9]*\)">.*/\(.*\)</image>.*|\1x\2 \3|p' "$scratch/metainfo.xml")

for bad in http://example.org file:///tmp https://; do
  ! build "$bad" || fail "$bad is accepted"
done
exit $status
