#!/usr/bin/env bash
# install.sh BUILD-FOLDER VERSION: checks that `cmake --install` installs exactly the expected files in any folder, and that
# the programs run there.
set -uo pipefail
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix="$scratch/some where"
id=io.github.stackreel.Stackreel

cmake --install "$1" --prefix "$prefix" >"$scratch/log" 2>&1 || { tail "$scratch/log"; exit 1; }
expected="bin/stackreel
bin/stackreel-cli
lib/stackreel/Info.json
lib/stackreel/colours/bt2020.cube
lib/stackreel/colours/gamma22.cube
lib/stackreel/colours/gamma28.cube
lib/stackreel/colours/hlg-bt709.cube
lib/stackreel/colours/hlg-p3.cube
lib/stackreel/colours/hlg.cube
lib/stackreel/colours/p3.cube
lib/stackreel/colours/pq-bt709.cube
lib/stackreel/colours/pq-p3.cube
lib/stackreel/colours/pq.cube
lib/stackreel/colours/smpte170m.cube
lib/stackreel/ffmpeg
lib/stackreel/ffprobe
share/applications/$id.desktop
share/bash-completion/completions/stackreel-cli
share/fish/vendor_completions.d/stackreel-cli.fish
share/icons/hicolor/scalable/apps/$id.svg
share/icons/hicolor/symbolic/apps/$id-symbolic.svg
share/man/man1/stackreel-cli.1
share/man/man1/stackreel.1
share/metainfo/$id.metainfo.xml
share/zsh/site-functions/_stackreel-cli"
diff <(LC_ALL=C sort <<<"$expected") <(cd "$prefix" && find . -type f | sed 's|^\./||' | LC_ALL=C sort) || exit 1
[ "$("$prefix/bin/stackreel-cli" --version | grep -oE '[0-9.]+$')" = "$2" ] || { echo "the command line does not run"; exit 1; }
"$prefix/lib/stackreel/ffprobe" -version >/dev/null || { echo "the installed ffprobe does not run"; exit 1; }
