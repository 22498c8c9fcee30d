#pragma once

#include "tests/model/ModelTest.h"
#include "tests/support/TemporaryDirectory.h"

#include <filesystem>

namespace stackreel
{

/// A model with a clip that is loaded and paused, ready to be exported.
class ExportFlowTest : public ModelTest
{
protected:
    ExportFlowTest()
    {
        load(20);
        m_world.thumbnails.back().task().complete({});
        model().togglePreviewPlayback();
        happened();
    }

    /// Chooses where to export to; the export begins.
    void startExport()
    {
        model().chooseExportDestination();
        m_world.savePanel->choose(destination);
        runQueuedTasks();
        ASSERT_EQ(model().phase(), Phase::exporting());
        happened();
    }
    /// Ends the export started last.
    ManualTask<std::filesystem::path>& exporting() { return m_world.exports.back().task(); }

    TemporaryDirectory m_directory;
    const std::filesystem::path destination = m_directory / "Beach day-vertical.mp4";
};

} // namespace stackreel
