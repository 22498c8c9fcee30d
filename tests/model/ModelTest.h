#pragma once

#include "model/AppModel.h"
#include "tests/model/AnnouncementRecorder.h"
#include "tests/support/fakes/FakeServices.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace stackreel
{

/// A model with fake services. One journal records the changes of its properties and its calls to the
/// services.
class ModelTest : public testing::Test
{
protected:
    using Lines = Journal::Lines;

    ModelTest();

    AppModel& model() { return *m_model; }
    /// Destroys the model, as closing its window does.
    void destroyModel();
    FakePreviewPlayer& player() { return m_services.players->last(); }
    /// Runs the calls that are queued on the main thread.
    static void runQueuedTasks();
    /// The lines of the journal since the last call.
    Lines takeJournal() { return m_services.journal->take(); }

    /// The properties of a landscape clip of this duration, in seconds.
    static MediaInfo clip(double duration) { return landscapeClip(duration); }
    /// Chooses a file and starts its load.
    void choose(const std::filesystem::path& file);
    /// Completes the probe and the preview of the load that was started last.
    void finishLoad(double duration);
    /// Loads a clip, except for its thumbnails, and clears the journal.
    void load(double duration, const std::filesystem::path& file = "/clips/Beach day.MOV");

    FakeServices m_services;

private:
    std::unique_ptr<AppModel> m_model;
    std::optional<AnnouncementRecorder> m_recorder;
};

} // namespace stackreel
