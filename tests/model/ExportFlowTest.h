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
        m_services.thumbnails.back().task().complete({});
        model().togglePreviewPlayback();
        takeJournal();
    }

    /// Chooses the destination and starts the export.
    void startExport()
    {
        model().chooseExportDestination();
        m_services.savePanel->choose(destination);
        runQueuedTasks();
        ASSERT_EQ(model().phase(), Phase::exporting());
        takeJournal();
    }
    /// The task of the export that was started last. The test completes it or makes it fail.
    ManualTask<std::filesystem::path>& exporting() { return m_services.exports.back().task(); }

    TemporaryDirectory m_directory;
    const std::filesystem::path destination = m_directory / "Beach day-vertical.mp4";
};

} // namespace stackreel
