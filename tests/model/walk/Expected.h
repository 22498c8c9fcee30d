#pragma once

#include "framing/ExportCommandBuilder.h"
#include "model/Phase.h"

#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace stackreel
{

constexpr std::size_t noCall = std::numeric_limits<std::size_t>::max();

/// An export that the user has confirmed.
struct ExpectedExport {
    ExportRequest request;
    unsigned source = 0;        ///< the number of the source that was chosen when it started
    std::size_t call = noCall;  ///< the index of its call of the fake service, once it runs
    bool stopRequested = false; ///< by the user, by a later export of the same source, or by quitting
    bool ended = false;
};

/// The expected state of the model after the operations so far, when its queued calls have run.
struct Expected {
    enum class Load { none, probing, previewing, done, failed };

    unsigned source = 0; ///< the number of sources that were chosen so far
    std::optional<std::filesystem::path> file;
    Load load = Load::none;
    std::size_t inspection = noCall; ///< the index of the call of the fake service for this source
    std::size_t preview = noCall;
    std::optional<MediaInfo> media; ///< of the loaded source, if any
    std::filesystem::path previewFile;
    Phase phase = Phase::empty();
    std::vector<ExpectedExport> exports; ///< in the order of their start

    /// The export that the window shows and the user can cancel, or null.
    ExpectedExport* shownExport()
    {
        if (exports.empty() || exports.back().ended || exports.back().source != source)
            return nullptr;
        return &exports.back();
    }
    bool isLoaded() const { return load == Load::done; }
};

} // namespace stackreel
