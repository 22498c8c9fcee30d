# The Debian package, as `scripts/package` builds it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME stackreel)
set(CPACK_PACKAGE_VENDOR "The Stackreel authors")
# This address is a placeholder. Publishers of packages set their own address.
set(STACKREEL_MAINTAINER "The Stackreel authors <authors@stackreel.invalid>" CACHE STRING "Maintainer of the package")
set(CPACK_PACKAGE_CONTACT "${STACKREEL_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "stack two views of one landscape clip into a vertical video")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Stackreel turns one landscape video into a vertical one: two crops of the
same clip, say the speaker and the screen, stacked into a tall picture of
9:16, 4:5, 1:1 or a size of your own, over a part of the clip, with or
without its sound.
.
This package has the application with its window, stackreel, and the command
line stackreel-cli, which does the same work for many clips at once.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# dpkg-shlibdeps finds the packages of linked libraries. It cannot find the packages below, because they are loaded at
# run time.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(depends
  ffmpeg
  # Decoders, demultiplexers, and the parsers of H.264 and H.265, which are in "bad".
  gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-bad gstreamer1.0-libav
  # The QML modules that the window imports.
  qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript qml6-module-qtquick
  qml6-module-qtquick-layouts qml6-module-qtquick-templates qml6-module-qtquick-window
  # Icons and fonts. Before Qt 6.6, the SVG plugins are in the package of the library.
  "qt6-svg-plugins | libqt6svg6 (<< 6.6)" hicolor-icon-theme fonts-inter fonts-dosis fonts-jetbrains-mono
  # The certificates that the feed's server is verified with.
  ca-certificates)
list(JOIN depends ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "qt6-wayland, qt6-gtk-platformtheme | qt6-xdgdesktopportal-platformtheme, gstreamer1.0-alsa, xdg-utils")

set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/SetFileTimes.cmake)
include(CPack)
