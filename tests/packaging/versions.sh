#!/usr/bin/env bash
# versions.sh VERSION SOURCE-FOLDER: checks that all released files have the same version and id.
set -uo pipefail
version=$1
source=$2
status=0
id=io.github.stackreel.Stackreel

same() { # WHAT EXPECTED FOUND
  [ "$2" = "$3" ] || { echo "$1: expected $2, found $3"; status=1; }
}

metainfo=$source/packaging/linux/$id.metainfo.xml
desktop=$source/packaging/linux/$id.desktop
same changelog "$version" "$(sed -n '1s/.*(\(.*\)).*/\1/p' "$source/debian/changelog")"
same spec "$version" "$(sed -n 's/^Version: *//p' "$source/packaging/rpm/stackreel.spec")"
same PKGBUILD "$version" "$(sed -n 's/^pkgver=//p' "$source/packaging/aur/PKGBUILD")"
same metainfo "$version" "$(sed -n 's/.*<release version="\([^"]*\)".*/\1/p' "$metainfo" | head -n 1)"
same id "$id" "$(sed -n 's|.*<id>\(.*\)</id>.*|\1|p' "$metainfo")"
same launchable "$id.desktop" "$(sed -n 's|.*<launchable.*>\(.*\)</launchable>.*|\1|p' "$metainfo")"
same icon "$id" "$(sed -n 's/^Icon=//p' "$desktop")"
same program "\"$id\"" "$(sed -n 's/.*applicationId = \(.*\);/\1/p' "$source/app/ApplicationId.h")"
same "Wayland's window class" applicationId \
  "$(sed -n 's/.*setDesktopFileName(.*(\(.*\)));/\1/p' "$source/app/main.cpp")"
# On X11, Qt sets the application's name as the window class.
same "X11's window class" "$(sed -n 's/.*setApplicationName(.*"\(.*\)".*/\1/p' "$source/app/main.cpp")" \
  "$(sed -n 's/^StartupWMClass=//p' "$desktop")"
same flatpak "$id" "$(sed -n 's/^app-id: //p' "$source/packaging/flatpak/$id.yml")"
# The program takes no file argument, so a file manager must not offer it for any type.
same "file types" "" "$(grep -E '^MimeType|^Exec=.*%' "$desktop")"
exit $status
