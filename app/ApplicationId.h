#pragma once

namespace stackreel
{

/// The program's one name towards the desktop: of its desktop file, its metainfo and its icons, and on
/// Wayland of its windows; on X11 their class is the application's name. The files under `packaging/linux`
/// are named after it.
inline constexpr const char* applicationId = "io.github.stackreel.Stackreel";

} // namespace stackreel
