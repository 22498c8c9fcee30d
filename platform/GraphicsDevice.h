#pragma once

#include <filesystem>

namespace stackreel
{

/// Whether this system has a device that may draw with OpenGL: a graphics processor, not just a screen.
/// Looking costs nothing, while OpenGL itself, asked where there is none, loads an imitation of 100 MiB that
/// then stays. `devices` is the folder of the system's devices.
bool hasGraphicsDevice(const std::filesystem::path& devices = "/dev");

} // namespace stackreel
