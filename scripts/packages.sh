# Sourced by ./run and ./test: the Debian packages this project needs, and their installation.

# To build the programs and run them.
run_packages=(
  g++ cmake ninja-build pkg-config
  qt6-base-dev qcoro-qt6-dev nlohmann-json3-dev libcli11-dev libsodium-dev
  ffmpeg
)
# To build the player and play with it.
player_packages=(
  libgstreamer1.0-dev libgstreamer-plugins-base1.0-dev
  gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-bad gstreamer1.0-libav
)
# To build the window and show it.
window_packages=(
  qt6-declarative-dev qt6-declarative-dev-tools
  qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript
  qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-layouts
  qml6-module-qtquick-templates qml6-module-qtquick-window
  libqt6svg6 fonts-inter fonts-dosis fonts-jetbrains-mono
)
# To build and run the tests, fuzzers and benchmarks as well.
test_packages=(
  libgtest-dev librapidcheck-dev libbenchmark-dev
  clang-16 libfuzzer-16-dev libclang-rt-16-dev
  locales procps time util-linux
  qml6-module-qttest xvfb dbus-daemon
  openbox xfwm4 xdotool imagemagick x11-utils libgl1-mesa-dri
  at-spi2-core python3-gi gir1.2-atspi-2.0
  weston qt6-wayland
  desktop-file-utils appstream man-db bash-completion zsh fish python3
)
# To build the Debian package and try it in a bare system.
package_packages=(dpkg-dev lintian debootstrap util-linux xvfb xdotool)

missing_packages() {
  local name
  for name in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || echo "$name"
  done
}

# require_packages NAME…: installs what is missing, as root or through sudo; says what is needed where it may not.
require_packages() {
  local missing as_root=()
  missing=$(missing_packages "$@" | tr '\n' ' ')
  [ -z "$missing" ] && return 0
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null || { ! sudo -n true 2>/dev/null && [ ! -t 0 ]; }; then
      echo "These packages are missing and cannot be installed without root: $missing" >&2
      echo "Install them with: apt-get install --no-install-recommends $missing" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  echo "Installing: $missing" >&2
  "${as_root[@]}" apt-get update -qq >&2 || true
  # shellcheck disable=SC2086 # a list of names
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends $missing >&2
}
