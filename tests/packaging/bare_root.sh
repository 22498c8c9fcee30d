# shellcheck shell=bash disable=SC2154 # the script that sources this one sets $root and $base
# Sourced by the test of the package: makes a bare system of this machine's release in the folder $root, in which the
# package is installed. The system is a copy of $base.
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/bare_root.sh"

# The name of this machine's release of Debian; empty if it is another system.
debian_suite() { (. /etc/os-release && [ "$ID" = debian ] && echo "$VERSION_CODENAME"); }

make_root() {
  rm -rf --one-file-system "$root"
  cp -a "$base" "$root"
}

# in_root root|user COMMAND…: runs a command in the system, as this user and in the user's home folder.
in_root() {
  local user=$1 home=/home/user
  shift
  [ "$user" = user ] || home=/root
  run_in_root "$root" "$user" "$home" ${DISPLAY_IN_ROOT:+DISPLAY="$DISPLAY_IN_ROOT"} -- "$@"
}
