# shellcheck shell=bash disable=SC2154 # the script that sources this one sets $root and $base
# Sourced by the package's test: a bare system of this machine's own release in the folder $root, for the package to be
# installed in. It is a copy of $base.
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/bare_root.sh"

# The name of this machine's release; nothing where it is not a Debian.
debian_suite() { (. /etc/os-release && [ "$ID" = debian ] && echo "$VERSION_CODENAME"); }

make_root() {
  rm -rf --one-file-system "$root"
  cp -a "$base" "$root"
}

# in_root root|user COMMAND…: runs a command inside, in the home folder of that user.
in_root() {
  local user=$1 home=/home/user
  shift
  [ "$user" = user ] || home=/root
  run_in_root "$root" "$user" "$home" ${DISPLAY_IN_ROOT:+DISPLAY="$DISPLAY_IN_ROOT"} -- "$@"
}
