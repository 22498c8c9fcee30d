#pragma once

#include "model/AppModel.h"
#include "tests/support/fakes/FakeServices.h"
#include "ui/TimelineEditor.h"
#include "ui/WindowModel.h"

#include <QCoreApplication>

#include <algorithm>
#include <string>

namespace stackreel
{

/// A strip of 836 points, whose track is 800 points long, over a playing clip of 20 seconds: 40 points a
/// second, beginning at 18.
struct LoadedTimeline {
    LoadedTimeline() : model(world.services()), windowModel(model)
    {
        timeline.setModel(&windowModel);
        timeline.setWidth(836);
        model.chooseSource();
        world.openPanel->choose("/clips/beach.mov");
        settle();
        world.inspections.back().task().complete({.width = 1920,
                                                  .height = 1080,
                                                  .rotation = 0,
                                                  .duration = 20,
                                                  .videoCodec = "h264",
                                                  .audioCodec = {}});
        world.previews.back().task().complete("/clips/beach.mov");
        settle();
        world.journal->take();
    }

    static void settle()
    {
        for (int round = 0; round < 3; ++round)
            QCoreApplication::sendPostedEvents();
    }

    void trim(double start, double end)
    {
        model.updateTrimStart(start);
        model.updateTrimEnd(end);
        model.seekPreview(start);
        world.journal->take();
    }

    /// How often this line was written since the last call of the journal.
    static std::ptrdiff_t count(const Journal::Lines& lines, const std::string& word)
    {
        return std::count_if(lines.begin(), lines.end(),
                             [&](const auto& line) { return line.find(word) != std::string::npos; });
    }

    FakeServices world;
    AppModel model;
    WindowModel windowModel;
    TimelineEditor timeline;
};

/// Where a time is on that strip.
inline double xOf(double seconds)
{
    return 18 + 40 * seconds;
}

} // namespace stackreel
