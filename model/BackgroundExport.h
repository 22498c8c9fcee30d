#pragma once

#include "model/TaskHandle.h"

#include <filesystem>
#include <memory>

namespace stackreel
{

/// An export that runs or waits for its turn, and that the phase does not show, because its source was
/// replaced or a later export superseded it.
struct BackgroundExport {
    unsigned number = 0; ///< identifies the export; a later export has a higher number
    std::filesystem::path destination;
    std::shared_ptr<TaskHandle> task; ///< cancels the export
    bool operator==(const BackgroundExport&) const = default;
};

} // namespace stackreel
