#pragma once

#include <string>
#include <vector>

namespace stackreel
{

/// The arguments of `ffmpeg` for one export, in order, without the program's name. A path has the same bytes
/// as on disk.
struct ExportCommand {
    std::vector<std::string> arguments;

    bool operator==(const ExportCommand&) const = default;
};

} // namespace stackreel
