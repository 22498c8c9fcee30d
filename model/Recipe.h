#pragma once

#include "framing/ExportCommandBuilder.h"

#include <optional>
#include <string>

namespace stackreel
{

/// The choices of an export that can be repeated with another source. An empty value stands for the default.
struct Recipe {
    std::optional<OutputAspect> aspect;
    std::optional<PixelSize> size;    ///< only with the aspect `custom`
    std::optional<CropRegion> top;    ///< inside the frame
    std::optional<CropRegion> bottom; ///< inside the frame
    std::optional<double> from;       ///< seconds, not negative
    std::optional<double> to;         ///< seconds; empty for the source's end
    std::optional<bool> sound;
    std::optional<std::int64_t> audioTrack = {}; ///< counted from 1; without sound it has no meaning

    /// The choices that make the same request again, for the same source.
    static Recipe of(const ExportRequest& request);
    /// These choices, and those of `base` where there are none.
    Recipe over(const Recipe& base) const;
    ExportSettings settings() const;
    /// The choices as a JSON object, as docs/recipe.schema.json describes it: on one line, or with a line for
    /// each value and a final line feed. Numbers are written so that they are read back exactly.
    std::string json() const;
    std::string jsonLines() const;

    bool operator==(const Recipe&) const = default;
};

/// The version of the recipes that are written. A newer one may have other keys.
inline constexpr int recipeVersion = 1;

} // namespace stackreel
