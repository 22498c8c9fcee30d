#pragma once

#include "model/AppModel.h"
#include "tests/model/AnnouncementRecorder.h"
#include "tests/support/fakes/FakeServices.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace stackreel
{

/// A model in a world of fakes, with one journal of its announcements and of what it asked of that world.
class ModelTest : public testing::Test
{
protected:
    using Lines = Journal::Lines;

    ModelTest();

    AppModel& model() { return *m_model; }
    /// Lets go of the model, as the end of a window would.
    void destroyModel();
    FakeQueuePlayer& player() { return m_world.playback->player(); }
    /// Runs what is queued on the main thread.
    static void runQueuedTasks();
    /// What happened since the last call.
    Lines happened() { return m_world.journal->take(); }

    /// The facts of a landscape clip of this length.
    static MediaInfo clip(double duration);
    /// Chooses a file and starts its load.
    void choose(const std::filesystem::path& file);
    /// Ends the probe of the load started last with a clip, and the making of its preview.
    void finishLoad(double duration);
    /// Loads a clip to the end, with its thumbnails asked for, and forgets what happened.
    void load(double duration, const std::filesystem::path& file = "/clips/Beach day.MOV");

    FakeServices m_world;

private:
    std::unique_ptr<AppModel> m_model;
    std::optional<AnnouncementRecorder> m_recorder;
};

} // namespace stackreel
