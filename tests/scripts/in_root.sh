#!/usr/bin/env bash
# in_root.sh SOURCE: tests how scripts/in-root clones a checkout and what it says when it cannot, with fakes of debootstrap
# and unshare.
set -uo pipefail
source=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
status=0

expect() { # WHAT EXPECTED SEEN
  [ "$2" = "$3" ] && return
  printf 'FAILED %s\n  expected: %s\n  seen:     %s\n' "$1" "$2" "$3"
  status=1
}
tool() { printf '#!/bin/bash\n%s\n' "$2" >"$folder/bin/$1" && chmod +x "$folder/bin/$1"; }

mkdir -p "$folder/bin" "$folder/checkout" "$folder/roots/trixie/etc"
tool debootstrap 'exit 1'
tool unshare 'exit 0'
tool dpkg-query 'echo -n installed'
cp -r "$source/scripts" "$folder/checkout"
in_root() {
  STACKREEL_ROOTS=$folder/roots PATH=$folder/bin:/usr/bin:/bin HOME=$folder GIT_CONFIG_NOSYSTEM=1 \
    env -u SUDO_UID "$folder/checkout/scripts/in-root" trixie true 2>&1
}
as() { git -C "$folder/checkout" -c user.name=a -c user.email=b -c safe.directory='*' "$@"; }

tool id 'echo 1000'
mkdir "$folder/tools"
for each in bash sed dirname; do ln -s "$(command -v "$each")" "$folder/tools"; done
expect "without sudo, one sentence says so" "Making a bare system takes root, and there is no sudo here." \
  "$(PATH=$folder/bin:$folder/tools "$folder/checkout/scripts/in-root" trixie true 2>&1)"

tool id 'echo 0'
clone=$folder/roots/trixie/root/stackreel
expect "without a checkout, git's reason is said" \
  "The checkout cannot be cloned into $clone: fatal: '$folder/checkout' does not appear to be a git repository" "$(in_root)"

as init -q
as add .
as commit -qm one
if [ "$(/usr/bin/id -u)" = 0 ]; then chown -R 1000:1000 "$folder/checkout"; fi
expect "root clones a checkout of another user" "" "$(in_root)"
expect "what is committed is in the clone" "$(as rev-parse HEAD)" "$(git -C "$clone" rev-parse HEAD)"
exit $status
