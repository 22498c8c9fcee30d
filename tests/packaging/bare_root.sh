# Sourced by the package's test: a minimal Debian 12 in the folder $root. It is a copy of $base, which is made once.
# Downloaded packages are kept in $archives.

# Prints why no such system can be made here. Fails when one can be made.
why_no_root() {
  [ "$(id -u)" -eq 0 ] || { echo "making one takes root"; return; }
  command -v debootstrap >/dev/null || { echo "there is no debootstrap"; return; }
  unshare --mount --pid --fork true 2>/dev/null || { echo "mount namespaces are not allowed here"; return; }
  [ -f "$base.done" ] && return 1
  mkdir -p "$base"
  if debootstrap --variant=minbase bookworm "$base" >"$base.log" 2>&1; then
    touch "$base.done"
    return 1
  fi
  echo "debootstrap failed, see $base.log"
  rm -rf --one-file-system "$base"
}

make_root() {
  rm -rf --one-file-system "$root"
  mkdir -p "$archives/partial"
  cp -a "$base" "$root" || return 1
  cp /etc/resolv.conf "$root/etc/resolv.conf"
  # Exit status 101 keeps packages from starting services.
  printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
  chmod 755 "$root/usr/sbin/policy-rc.d"
  mkdir -p "$root/home/user"
  chown 1000:1000 "$root/home/user"
}

# in_root root|user COMMAND…: runs a command in $root. Its processes and mounts end with it.
in_root() {
  local user=1000:1000 home=/home/user
  [ "$1" = user ] || { user=0:0 home=/root; }
  shift
  unshare --mount --pid --fork --kill-child --propagation private sh -ec '
    root=$1 archives=$2 user=$3 home=$4 display=$5
    shift 5
    mount -t proc proc "$root/proc"
    mount --rbind /dev "$root/dev"
    mount --bind "$archives" "$root/var/cache/apt/archives"
    exec chroot --userspec="$user" "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME="$home" LC_ALL=C.UTF-8 \
      DEBIAN_FRONTEND=noninteractive ${display:+DISPLAY="$display"} sh -c "cd && exec \"\$@\"" sh "$@"
  ' sh "$root" "$archives" "$user" "$home" "${DISPLAY_IN_ROOT:-}" "$@"
}
