#include "model/ExportShutdown.h"
#include "model/TaskHandle.h"
#include "tests/player/RealModelTest.h"

#include <functional>

namespace stackreel
{

namespace
{

using EndingRealModel = RealModelTest;

} // namespace

TEST_F(EndingRealModel, CancellingAnExportRemovesTheFileAndPlaysThePreview)
{
    load(clipWithSound);
    startWriting();
    model().exportTask()->cancel();
    ASSERT_TRUE(reaches(Phase::Kind::ready));
    expectNothingLeft();
    const double before = model().currentTime();
    EXPECT_TRUE(eventually([&] { return model().currentTime() != before; }));

    startExport();
    model().exportTask()->cancel();
    ASSERT_TRUE(reaches(Phase::Kind::ready));
    expectNothingLeft();
}

TEST_F(EndingRealModel, QuittingDuringAnExportRemovesTheFile)
{
    load(clipWithSound);
    startWriting();
    ExportShutdown::endExport(model().exportTask());
    expectNothingLeft();
    m_model.reset();
}

TEST_F(EndingRealModel, CanBeDestroyedDuringAnExport)
{
    load(clipWithSound);
    startWriting();
    const auto task = model().exportTask();
    m_model.reset();
    ExportShutdown::endExport(task);
    expectNothingLeft();
}

TEST_F(EndingRealModel, CanBeDestroyedAtAnyMomentOfALoad)
{
    const std::function<bool()> moments[] = {
        [] { return true; },
        [] { return hasChildren(); }, // during the probe, which is a child process
        [this] { return model().mediaInfo().has_value(); },
        [this] { return model().phase() == Phase::ready(); },
        [this] { return model().currentTime() > 0; },
        [this] { return !model().timelineThumbnails().empty(); },
    };
    for (const auto& moment : moments) {
        choose(clipWithSound);
        ASSERT_TRUE(eventually(moment));
        makeModel(std::make_shared<GStreamerStills>());
    }
    load(wide);
    EXPECT_TRUE(showsFrames(10));
}

} // namespace stackreel
