#pragma once

#include "model/AppModel.h"
#include "player/GStreamerPlayer.h"
#include "player/GStreamerStills.h"
#include "tests/player/CollectingOutput.h"
#include "tests/player/MarkedClip.h"
#include "tests/support/Awaited.h"
#include "tests/support/Descriptors.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/fakes/FakePanels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace stackreel
{

inline const MarkedClip clipWithSound{
    .name = "model-sounding.mp4", .frames = 180, .keyInterval = 250, .sound = true};
inline const MarkedClip wide{.name = "model-wide.mp4", .frames = 60, .size = "400x160"};

/// The model with the real player, the real tools and real clips. Only the panels are fakes.
class RealModelTest : public testing::Test
{
protected:
    RealModelTest() : m_temporaryDirectory("TMPDIR", m_temporary.path())
    {
        makeModel(std::make_shared<GStreamerStills>());
    }

    /// Waits until all work of the model has ended: each load and each thumbnail task owns its stills.
    void TearDown() override
    {
        m_model.reset();
        EXPECT_TRUE(eventually([this] {
            return std::all_of(m_stills.begin(), m_stills.end(),
                               [](const auto& stills) { return stills.expired(); });
        }));
    }

    void makeModel(std::shared_ptr<Stills> stills)
    {
        m_stills.push_back(stills);
        m_model = std::make_unique<AppModel>(ModelServices::system(
            [] { return std::make_shared<GStreamerPlayer>(); }, std::move(stills), m_openPanel, m_savePanel));
    }
    AppModel& model() { return *m_model; }

    bool reaches(Phase::Kind kind)
    {
        return eventually([&] { return model().phase().kind() == kind; });
    }
    void choose(const MarkedClip& clip)
    {
        const auto file = clip.file();
        model().chooseSource();
        m_openPanel->choose(file);
        ASSERT_TRUE(reaches(Phase::Kind::preparing));
    }
    void load(const MarkedClip& clip)
    {
        choose(clip);
        ASSERT_TRUE(reaches(Phase::Kind::ready)) << model().phaseMessage();
        model().player()->setVideoOutput(output);
    }
    /// Drags both handles in small steps, as a user does.
    void trim(double start, double end)
    {
        model().beginTimelineInteraction();
        for (int step = 1; step <= 10; ++step)
            model().updateTrimStart(start * step / 10);
        model().endTimelineInteraction(true);
        model().beginTimelineInteraction();
        for (int step = 10; step >= 0; --step)
            model().updateTrimEnd(end + (model().mediaInfo()->duration - end) * step / 10);
        model().endTimelineInteraction(true);
    }
    bool showsNumber(int number)
    {
        return eventually([&] { return output->current() == number; });
    }
    bool showsFrames(std::size_t count)
    {
        return eventually([&] { return output->shown().size() >= count; });
    }
    void startExport()
    {
        model().chooseExportDestination();
        m_savePanel->choose(destination);
        ASSERT_TRUE(reaches(Phase::Kind::exporting));
    }
    /// Starts an export and waits until its child has begun to write.
    void startWriting()
    {
        startExport();
        ASSERT_TRUE(eventually([this] { return !contentOf(destination).empty(); }));
        ASSERT_EQ(model().phase(), Phase::exporting());
    }
    void expectNothingLeft()
    {
        EXPECT_FALSE(std::filesystem::exists(destination));
        EXPECT_EQ(m_folder.names(), std::vector<std::string>());
        EXPECT_FALSE(hasChildren());
    }

    TemporaryDirectory m_folder;
    TemporaryDirectory m_temporary; ///< holds the proxies of this process only
    ScopedEnvironment m_temporaryDirectory;
    const std::filesystem::path destination = m_folder / "out.mp4";
    const std::shared_ptr<Journal> m_journal = std::make_shared<Journal>();
    const std::shared_ptr<FakeOpenPanel> m_openPanel =
        std::make_shared<FakeOpenPanel>(m_journal, "open panel");
    const std::shared_ptr<FakeSavePanel> m_savePanel =
        std::make_shared<FakeSavePanel>(m_journal, "save panel");
    const std::shared_ptr<CollectingOutput> output = std::make_shared<CollectingOutput>();
    std::vector<std::weak_ptr<Stills>> m_stills; ///< owned by loads and thumbnail tasks
    std::unique_ptr<AppModel> m_model;
};

} // namespace stackreel
