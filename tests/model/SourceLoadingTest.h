#pragma once

#include "tests/model/ModelTest.h"

#include <string>
#include <vector>

namespace stackreel
{

/// A model that loads sources.
class SourceLoadingTest : public ModelTest
{
protected:
    /// The lines in the journal from the start of a load until the previous player is released.
    static Lines resetChanges(const std::string& source)
    {
        return {"phase preparing", "sourceURL " + source, "mediaInfo none", "timelineThumbnails 0",
                "trimStart 0",     "trimEnd 0",           "currentTime 0"};
    }
    static Lines joined(Lines lines, const Lines& more)
    {
        lines.insert(lines.end(), more.begin(), more.end());
        return lines;
    }
    static std::vector<VideoFrame> images(std::size_t count) { return std::vector<VideoFrame>(count); }
};

} // namespace stackreel
