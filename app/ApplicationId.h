#pragma once

namespace stackreel
{

/// The program's application id: the name of its desktop file, its metainfo and its icons, and on Wayland the
/// app id of its windows. On X11 the window class is the application's name instead. The files under
/// `packaging/linux` have this id as their name.
inline constexpr const char* applicationId = "io.github.stackreel.Stackreel";

} // namespace stackreel
