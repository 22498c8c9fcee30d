# shellcheck shell=bash disable=SC2034 # the lists are for the scripts that source this one
# Sourced by other scripts: the packages that this project needs, and functions that install them on Debian and Ubuntu.
# An entry "a|b" stands for the first of these packages that the system offers, because the names differ between releases.

# To build the programs and run them.
run_packages=(
  g++ cmake ninja-build pkg-config
  qt6-base-dev qcoro-qt6-dev nlohmann-json3-dev libcli11-dev libsodium-dev
  ffmpeg
)
# To build the player and to play clips.
player_packages=(
  libgstreamer1.0-dev libgstreamer-plugins-base1.0-dev
  gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-bad gstreamer1.0-libav
)
# To build the window and show it. The icons need Qt's SVG plugins, which were in the package of the library before Qt
# 6.6.
window_packages=(
  qt6-declarative-dev qt6-declarative-dev-tools
  qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript
  qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-layouts
  qml6-module-qtquick-templates qml6-module-qtquick-window
  "qt6-svg-plugins|libqt6svg6" fonts-inter fonts-dosis fonts-jetbrains-mono
)
# Also to build and run the tests, fuzzers and benchmarks. The three packages of clang must have the same version.
test_packages=(
  libgtest-dev librapidcheck-dev libbenchmark-dev
  "clang-16|clang-19|clang-21|clang-22|clang-23"
  "libfuzzer-16-dev|libfuzzer-19-dev|libfuzzer-21-dev|libfuzzer-22-dev|libfuzzer-23-dev"
  "libclang-rt-16-dev|libclang-rt-19-dev|libclang-rt-21-dev|libclang-rt-22-dev|libclang-rt-23-dev"
  git locales procps time util-linux
  qml6-module-qttest xvfb dbus-daemon
  openbox xfwm4 xdotool imagemagick x11-utils libgl1-mesa-dri
  at-spi2-core python3-gi gir1.2-atspi-2.0
  weston qt6-wayland
  desktop-file-utils appstream man-db bash-completion zsh fish python3 python3-jsonschema
)
# For the tests of the README's lines for batch queues, which are skipped without them.
queue_packages=(parallel slurm-wlm)
# For the tests of the files for other package formats, which are skipped without them.
format_packages=(rpm rpmlint makepkg)
# To check how the sources are written.
lint_packages=(git shellcheck black clang-format clang-tidy)
# To build the Debian package and test it in a bare system.
package_packages=(git build-essential debhelper dpkg-dev lintian debootstrap util-linux xvfb xdotool)

is_installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# offered_name ENTRY: prints the first name of the entry that is installed or can be installed on this system; the last
# name if there is none.
offered_name() {
  local name policy
  for name in ${1//|/ }; do
    if [ "$name" = "$1" ] || is_installed "$name"; then break; fi
    # Do not pipe into `grep -q`: it exits early, SIGPIPE then ends apt-cache, and with pipefail the name counts as not
    # offered.
    policy=$(LC_ALL=C apt-cache policy "$name" 2>/dev/null)
    [[ $policy != *"Candidate: "[!\(]* ]] || break
  done
  echo "$name"
}

# missing_packages ENTRY…: prints the entries whose package is not installed. A later name of an entry does not replace
# one that is offered: where Qt's SVG plugins are a package of their own, the library alone is not enough.
missing_packages() {
  local entry
  for entry in "$@"; do
    is_installed "$(offered_name "$entry")" || echo "$entry"
  done
}

# require_packages ENTRY…: installs the missing packages, as root or through sudo. If neither is possible, prints their
# names.
require_packages() {
  local missing names=() entry as_root=()
  if ! command -v apt-get >/dev/null; then
    echo "There is no apt-get here, so nothing is installed. On Debian, these packages are needed: $*" >&2
    return 0
  fi
  missing=$(missing_packages "$@")
  [ -z "$missing" ] && return 0
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null || { ! sudo -n true 2>/dev/null && [ ! -t 0 ]; }; then
      for entry in $missing; do names+=("$(offered_name "$entry")"); done
      echo "These packages are missing and cannot be installed without root: ${names[*]}" >&2
      echo "Install them with: apt-get install --no-install-recommends ${names[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  "${as_root[@]}" apt-get update -qq >&2 || true
  missing=$(missing_packages "$@")
  for entry in $missing; do names+=("$(offered_name "$entry")"); done
  echo "Installing: ${names[*]}" >&2
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${names[@]}" >&2
}
