#pragma once

#include "tests/model/ModelTest.h"

#include <string>

namespace stackreel
{

/// A model whose preview a test puts where it wants it.
class PreviewPlaybackTest : public ModelTest
{
protected:
    /// Puts trim range and playhead where a test wants them, and forgets that.
    void place(double trimStart, double trimEnd, double currentTime)
    {
        model().setTrimStart(trimStart);
        model().setTrimEnd(trimEnd);
        model().setCurrentTime(currentTime);
        happened();
    }
    void pause()
    {
        model().togglePreviewPlayback();
        ASSERT_FALSE(model().previewPlaying());
        happened();
    }
    /// The journal of a loop that is built anew and does not play.
    static Lines rebuilt(int looper, const std::string& range, const std::string& playhead,
                         const std::string& seek)
    {
        return {"looper " + std::to_string(looper - 1) + ": disable",
                "player 1: remove all items",
                "make looper " + std::to_string(looper) + " on player 1 for /clips/Beach day.MOV " + range,
                "currentTime " + playhead,
                "player 1: seek to " + seek,
                "previewPlaying false"};
    }
};

} // namespace stackreel
