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

/// A timeline for a playing clip of 20 seconds. The timeline is 836 points wide. Its track starts at 18 and
/// is 800 points wide, so a second is 40 points.
struct LoadedTimeline {
    LoadedTimeline() : model(fakes.services()), windowModel(model)
    {
        timeline.setModel(&windowModel);
        timeline.setWidth(836);
        model.chooseSource();
        fakes.openPanel->choose("/clips/beach.mov");
        settle();
        fakes.inspections.back().task().complete({.width = 1920,
                                                  .height = 1080,
                                                  .rotation = 0,
                                                  .duration = 20,
                                                  .videoCodec = "h264",
                                                  .audioCodec = {}});
        fakes.previews.back().task().complete("/clips/beach.mov");
        settle();
        fakes.journal->take();
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
        fakes.journal->take();
    }

    /// The number of lines that contain this word.
    static std::ptrdiff_t count(const Journal::Lines& lines, const std::string& word)
    {
        return std::count_if(lines.begin(), lines.end(),
                             [&](const auto& line) { return line.find(word) != std::string::npos; });
    }

    FakeServices fakes;
    AppModel model;
    WindowModel windowModel;
    TimelineEditor timeline;
};

/// The position of a time on that timeline.
inline double xOf(double seconds)
{
    return 18 + 40 * seconds;
}

} // namespace stackreel
