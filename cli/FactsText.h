#pragma once

#include "media/MediaInfo.h"
#include "media/SourceDetails.h"

#include <string>

namespace stackreel
{

/// A video's properties as `probe` prints them, UTF-8, with a final line feed. Pure.
struct FactsText {
    /// One line per property, labelled as in the window: Frame, Video, Length, and Audio if there is an audio
    /// stream. If there are several, each has a line with its number.
    static std::string lines(const MediaInfo& media, const SourceDetails& details);
    /// One JSON object, as docs/probe.schema.json describes it. Width and height are those of the coded
    /// frame, before rotation. Values that the file does not state, and numbers that are not finite, are
    /// null.
    static std::string json(const MediaInfo& media, const SourceDetails& details);
};

} // namespace stackreel
