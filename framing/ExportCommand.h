#pragma once

#include <string>
#include <vector>

namespace stackreel
{

/// One export, as the arguments of `ffmpeg` in order, without the program itself. Bytes: paths are as they
/// are on disk.
struct ExportCommand {
    std::vector<std::string> arguments;

    bool operator==(const ExportCommand&) const = default;
};

} // namespace stackreel
