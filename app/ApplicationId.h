#pragma once

namespace stackreel
{

/// The program's one name towards the desktop: of its desktop file, its metainfo, its icons and the class of
/// its windows. The files under `packaging/linux` are named after it.
inline constexpr const char* applicationId = "io.github.stackreel.Stackreel";

} // namespace stackreel
