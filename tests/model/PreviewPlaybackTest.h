#pragma once

#include "tests/model/ModelTest.h"

#include <string>

namespace stackreel
{

/// A model whose trim range and playhead a test can set.
class PreviewPlaybackTest : public ModelTest
{
protected:
    /// Sets the trim range and the playhead, and clears the journal.
    void setTimes(double trimStart, double trimEnd, double currentTime)
    {
        model().setTrimStart(trimStart);
        model().setTrimEnd(trimEnd);
        model().setCurrentTime(currentTime);
        takeJournal();
    }
    void pause()
    {
        model().togglePreviewPlayback();
        ASSERT_FALSE(model().previewPlaying());
        takeJournal();
    }
    /// The lines in the journal when the loop of a paused preview is rebuilt.
    static Lines rebuilt(const std::string& range, const std::string& playhead, const std::string& seek)
    {
        return {"player 1: open /clips/Beach day.MOV " + range, "currentTime " + playhead,
                "player 1: seek to " + seek, "previewPlaying false"};
    }
};

} // namespace stackreel
