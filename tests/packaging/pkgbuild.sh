#!/usr/bin/env bash
# pkgbuild.sh PKGBUILD: checks that makepkg accepts the file. Exits with 77 where makepkg is missing.
set -uo pipefail
command -v makepkg >/dev/null || { echo "makepkg is missing"; exit 77; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp "$1" "$scratch/PKGBUILD"
chmod -R a+rwX "$scratch"
# makepkg refuses to run as root, and without a pacman, which it does not call here.
as_user=()
[ "$(id -u)" -ne 0 ] || as_user=(setpriv --reuid=65534 --regid=65534 --clear-groups)
cd "$scratch" || exit 1
PACMAN=true "${as_user[@]}" makepkg --printsrcinfo >"$scratch/info" || exit 1
grep -qx 'pkgname = stackreel' "$scratch/info" || { cat "$scratch/info"; exit 1; }
