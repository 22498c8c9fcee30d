#pragma once

#include "framing/OutputAspect.h"
#include "framing/PixelSize.h"

#include <cstdint>

namespace stackreel
{

/// The user's choices for the output.
struct ExportSettings {
    OutputAspect aspect = OutputAspect::portrait;
    std::int64_t customWidth = 1080;  ///< pixels; used by `custom` only
    std::int64_t customHeight = 1920; ///< pixels; used by `custom` only
    bool includeAudio = true;         ///< whether the output has the source's sound, if there is any

    /// The output's size. A custom side is rounded down to an even number and is at least 2; it has no upper
    /// bound.
    PixelSize size() const;

    bool operator==(const ExportSettings&) const = default;
};

/// Width / height of one of the two stacked halves of an output: full width by half the height.
double panelAspect(PixelSize outputSize);

} // namespace stackreel
