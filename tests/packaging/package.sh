#!/usr/bin/env bash
# package.sh FOLDER: tests the Debian package. Builds it twice from its source package and compares the results, runs
# lintian on both, looks at how the programs are hardened, and installs the package in a bare root of this machine's own
# release. There it exports a clip, opens the window, looks for updates and removes the package. Prints one line for each
# check: ok, FAILED or skipped. Logs and screenshots stay in FOLDER.
set -uo pipefail
source=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
folder=$(realpath -m "$1")
base=$folder/base root=$folder/root
status=0
. "$source/tests/packaging/bare_root.sh"

ok() { echo "ok $*"; }
failed() { echo "FAILED $*"; status=1; }
skipped() { echo "skipped $*"; }
check() { # WHAT COMMAND…
  local what=$1
  shift
  if "$@"; then ok "$what"; else failed "$what"; fi
}

build_twice() {
  "$source/scripts/package" "$folder/first" >/dev/null && "$source/scripts/package" "$folder/second" >/dev/null || {
    failed "the package is built"
    exit 1
  }
  package=$(echo "$folder"/first/stackreel_*.deb)
  check "two builds of one commit give the same package" cmp "$package" "$folder"/second/stackreel_*.deb
}

run_lintian() {
  lintian --allow-root --fail-on error "$folder"/first/stackreel_*.changes >"$folder/lintian.log" 2>&1 && ok "lintian finds no error" || {
    cat "$folder/lintian.log"
    failed "lintian finds no error"
  }
}

programs_are_hardened() {
  rm -rf "$folder/content"
  dpkg-deb --extract "$package" "$folder/content" && python3 "$source/tests/packaging/hardening.py" "$folder/content"
}

install_package() {
  cp "$package" "$root/tmp/stackreel.deb"
  in_root root apt-get update -qq >"$folder/install.log" 2>&1 &&
    in_root root apt-get install -y --no-install-recommends /tmp/stackreel.deb >>"$folder/install.log" 2>&1 || {
    tail -n 20 "$folder/install.log"
    failed "the package installs with what it depends on"
    return 1
  }
  rm "$root/tmp/stackreel.deb"
  ok "the package installs with what it depends on"
  in_root root dpkg -L stackreel >"$folder/files"
}

export_works() {
  in_root user sh -s <"$source/debian/tests/export" >"$folder/export.log" 2>&1 || {
    cat "$folder/export.log"
    return 1
  }
}

window_opens() {
  local command
  command=$(sed -n 's/^Exec=//p' "$root"/usr/share/applications/*.desktop)
  bash "$source/tests/packaging/window.sh" "$folder" "$command"
}

updates_are_fetched() {
  bash "$source/tests/packaging/updates.sh" "$folder"
}

removal_is_complete() {
  local path left=0
  in_root root apt-get purge -y --autoremove stackreel >"$folder/purge.log" 2>&1 || { tail "$folder/purge.log"; return 1; }
  # A folder may be left if other packages have files in it.
  while read -r path; do
    [ -d "$root$path" ] || [ ! -e "$root$path" ] || { echo "left behind: $path"; left=1; }
  done <"$folder/files"
  find "$root" -xdev -path "$root/home" -prune -o -path "$root/proc" -prune -o -iname '*stackreel*' -print | grep . && left=1
  [ $left -eq 0 ]
}

mkdir -p "$folder"
build_twice
run_lintian
check "the programs in the package are hardened" programs_are_hardened
if reason=$(why_no_root) || { [ -z "$(debian_suite)" ] && reason="this is not a Debian"; }; then
  skipped "the bare system: $reason"
  exit $status
fi
make_base "$(debian_suite)" "$base" || { skipped "the bare system: debootstrap failed, see $base.log"; exit $status; }
make_root || { failed "a bare system is made"; exit 1; }
if install_package; then
  check "the command line exports a clip there" export_works
  check "the window opens there from the desktop file and plays a clip without an error" window_opens
  check "it looks for updates there over TLS" updates_are_fetched
  check "removing the package leaves no file" removal_is_complete
fi
rm -rf --one-file-system "$root"
exit $status
