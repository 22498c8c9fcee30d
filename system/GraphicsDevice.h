#pragma once

#include <filesystem>

namespace stackreel
{

/// Whether this system has a graphics processor that may support OpenGL. The check only looks for device
/// files. Creating an OpenGL context instead would load a software renderer of 100 MiB on a system without a
/// graphics processor, and it would never be unloaded. `devices` is the folder of the device files.
bool hasGraphicsDevice(const std::filesystem::path& devices = "/dev");

} // namespace stackreel
