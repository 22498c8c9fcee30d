# shellcheck shell=bash
# Sourced by other scripts: functions that make and use bare Debian systems in folders. They need root.

# why_no_root: prints why no such system can be made on this machine; returns 1 if one can be made.
why_no_root() {
  [ "$(id -u)" -eq 0 ] || { echo "making one takes root"; return; }
  command -v debootstrap >/dev/null || { echo "there is no debootstrap"; return; }
  unshare --mount --pid --fork true 2>/dev/null || { echo "mount namespaces are not allowed here"; return; }
  return 1
}

# make_base SUITE FOLDER: makes a minimal system of this release of Debian in the folder, unless the folder exists.
make_base() {
  local suite=$1 folder=$2
  [ -d "$folder" ] && return 0
  rm -rf --one-file-system "$folder.new"
  mkdir -p "$(dirname "$folder")"
  debootstrap --variant=minbase "$suite" "$folder.new" >"$folder.log" 2>&1 || { tail -n 5 "$folder.log" >&2; return 1; }
  # With this policy, packages that are installed in it start no services.
  printf '#!/bin/sh\nexit 101\n' >"$folder.new/usr/sbin/policy-rc.d"
  chmod 755 "$folder.new/usr/sbin/policy-rc.d"
  mkdir -p "$folder.new/home/user"
  chown 1000:1000 "$folder.new/home/user"
  mv "$folder.new" "$folder"
}

# run_in_root FOLDER USER DIRECTORY [VARIABLE=VALUE…] -- COMMAND…: runs a command in the system, as root or as user. Its
# processes and mounts end with the command. The system has a /dev/shm of its own, because libjack fails on files that
# another version of it has left there. Packages that apt downloads are kept in FOLDER.archives.
run_in_root() {
  local root=$1 user=1000:1000 home=/home/user directory=$3 variables=()
  [ "$2" = user ] || { user=0:0 home=/root; }
  shift 3
  while [ "$1" != -- ]; do variables+=("$1"); shift; done
  shift
  mkdir -p "$root.archives/partial"
  cp -L /etc/resolv.conf "$root/etc/resolv.conf"
  unshare --mount --pid --fork --kill-child --propagation private sh -ec '
    root=$1 archives=$2 user=$3
    shift 3
    mount --bind "$root" "$root"
    mount -t proc proc "$root/proc"
    mount --rbind /sys "$root/sys"
    mount --rbind /dev "$root/dev"
    mount -t tmpfs tmpfs "$root/dev/shm"
    mount --bind "$archives" "$root/var/cache/apt/archives"
    exec chroot --userspec="$user" "$root" env -i "$@"
  ' sh "$root" "$root.archives" "$user" PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
    HOME="$home" LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "${variables[@]}" \
    sh -c 'cd "$1" && shift && exec "$@"' sh "$directory" "$@"
}
