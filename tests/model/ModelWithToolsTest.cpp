#include "model/AppModel.h"
#include "model/ExportShutdown.h"
#include "model/TaskHandle.h"
#include "tests/model/FakeToolTest.h"
#include "tests/support/Awaited.h"
#include "tests/support/Descriptors.h"
#include "tests/support/fakes/FakePanels.h"
#include "tests/support/fakes/FakePlayers.h"
#include "tests/support/fakes/FakeStills.h"

#include <algorithm>

namespace stackreel
{

namespace
{

/// A model that runs real child processes. Only the player, the media framework and the panels are fakes.
class ModelWithToolsTest : public FakeToolTest
{
protected:
    ModelWithToolsTest()
    {
        installProbe(R"("width": 1920, "height": 1080)");
        m_model = std::make_unique<AppModel>(
            ModelServices::system([this] { return m_players->make(); }, m_stills, m_openPanel, m_savePanel));
    }

    /// Installs an `ffprobe` that reports a source as a video of 20 seconds with these keys.
    /// Installs an `ffprobe` that reports a source as a video of 20 seconds with these keys.
    void installProbe(const std::string& keys, const std::string& ofExport = exportReport) const
    {
        const std::string ofSource = R"({"streams": [{"codec_type": "video", "codec_name": "h264", )" + keys +
                                     R"(}], "format": {"duration": "20"}})";
        m_directory.writeExecutable("third_party/ffmpeg/bin/ffprobe",
                                    "#!/bin/sh\nfor file; do :; done\ncase \"$file\" in *.mp4) echo '" +
                                        ofExport + "' ;; *) echo '" + ofSource + "' ;; esac\n");
    }
    AppModel& model() { return *m_model; }
    bool becomesPhase(Phase::Kind kind)
    {
        return eventually([&] { return model().phase().kind() == kind; });
    }
    /// Waits until the model enters this phase, even if it leaves it at once.
    bool entersPhase(Phase::Kind kind)
    {
        bool passed = false;
        const QObject context;
        QObject::connect(&model(), &AppModel::phaseChanged, &context,
                         [&] { passed = passed || model().phase().kind() == kind; });
        return eventually([&] { return passed; });
    }
    void choose()
    {
        model().chooseSource();
        m_openPanel->choose("/clips/Beach day.MOV");
        ASSERT_TRUE(entersPhase(Phase::Kind::preparing));
    }
    void load()
    {
        choose();
        ASSERT_TRUE(becomesPhase(Phase::Kind::ready));
        ASSERT_TRUE(eventually([&] { return model().timelineThumbnails().size() == 12; }));
    }
    void startExport()
    {
        model().chooseExportDestination();
        m_savePanel->choose(destination);
        ASSERT_TRUE(entersPhase(Phase::Kind::exporting));
    }
    /// Waits until the work of a destroyed model has ended, at which no signal is emitted.
    static bool workEnds(const std::weak_ptr<void>& work)
    {
        return eventually([&] { return work.expired(); });
    }

    const std::filesystem::path destination = m_directory / "Beach day-vertical.mp4";
    const std::shared_ptr<Journal> m_journal = std::make_shared<Journal>();
    const std::shared_ptr<FakePlayers> m_players = std::make_shared<FakePlayers>(m_journal);
    const std::shared_ptr<FakeOpenPanel> m_openPanel =
        std::make_shared<FakeOpenPanel>(m_journal, "open panel");
    const std::shared_ptr<FakeSavePanel> m_savePanel =
        std::make_shared<FakeSavePanel>(m_journal, "save panel");
    std::shared_ptr<FakeStills> m_stills = std::make_shared<FakeStills>();
    std::unique_ptr<AppModel> m_model;
};

using Names = std::vector<std::string>;

/// Exports to a file that exists.
class ReplacingAFile : public ModelWithToolsTest
{
protected:
    ReplacingAFile() { m_directory.write(destination.filename(), "old"); }
    /// The names of the videos in the destination's folder.
    Names videos() const
    {
        Names names = m_directory.names();
        std::erase_if(names, [](const std::string& name) { return !name.ends_with(".mp4"); });
        return names;
    }

    const std::filesystem::path unfinished = m_directory / "Beach day-vertical (unfinished).mp4";
};

} // namespace

TEST_F(ModelWithToolsTest, LoadsAndExports)
{
    installTool("printf whole > \"$destination\"\n");
    load();
    EXPECT_EQ(model().trimEnd(), 20);
    startExport();
    ASSERT_TRUE(becomesPhase(Phase::Kind::complete));
    EXPECT_EQ(contentOf(destination), "whole");
    EXPECT_EQ(arguments(), ExportCommandBuilder::build({.input = "/clips/Beach day.MOV",
                                                        .output = destination,
                                                        .media = *model().mediaInfo(),
                                                        .top = model().topRegion(),
                                                        .bottom = model().bottomRegion(),
                                                        .settings = model().settings(),
                                                        .trimStart = 0,
                                                        .trimEnd = 20})
                               .arguments);
    EXPECT_EQ(model().exportTask(), nullptr);
    EXPECT_TRUE(model().previewPlaying());
}

TEST_F(ModelWithToolsTest, RunsTheExportsOfTwoSourcesOneAfterTheOther)
{
    installWaitingTool();
    load();
    startExport();
    ASSERT_TRUE(eventually([&] { return isWaiting(); }));
    const auto first = model().unfinishedExports().front();
    load();
    EXPECT_FALSE(first->hasEnded());

    installTool("printf whole > \"$destination\"\n");
    const auto other = m_directory / "other.mp4";
    model().chooseExportDestination();
    m_savePanel->choose(other);
    ASSERT_TRUE(entersPhase(Phase::Kind::exporting));
    EXPECT_TRUE(!std::filesystem::exists(other) || std::filesystem::is_empty(other)) << "it waits";
    first->cancel();
    ASSERT_TRUE(becomesPhase(Phase::Kind::complete));
    EXPECT_TRUE(first->hasEnded());
    EXPECT_EQ(contentOf(other), "whole");
    EXPECT_FALSE(std::filesystem::exists(destination));
}

TEST_F(ModelWithToolsTest, EndsTheChildOfALoadThatAnotherSupersedes)
{
    installWaitingTool();
    m_stills->playable = false;
    choose();
    ASSERT_TRUE(eventually([&] { return isWaiting(); }));
    m_stills->playable = true;
    choose();
    ASSERT_TRUE(eventually([&] { return model().unfinishedLoads().size() < 2; }));
    ASSERT_TRUE(eventually([&] { return model().unfinishedLoads().empty(); }));
    EXPECT_EQ(model().phase(), Phase::ready());
    EXPECT_FALSE(hasChildren());
}

TEST_F(ModelWithToolsTest, PlaysAPreviewCopyWhenTheSourceCannotBePlayed)
{
    installTool("printf copy > \"$destination\"\n");
    m_stills->playable = false;
    load();
    const auto lines = m_journal->take();
    const std::string opened = "player 1: open " + arguments().back() + " from";
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(),
                            [&](const std::string& line) { return line.starts_with(opened); }));
    EXPECT_EQ(m_stills->requests.back().file, arguments().back());
}

TEST_F(ModelWithToolsTest, FailsWhenThePreviewCopyFails)
{
    installTool("exit 1\n");
    m_stills->playable = false;
    choose();
    ASSERT_TRUE(becomesPhase(Phase::Kind::failed));
    EXPECT_EQ(model().phaseMessage(), "FFmpeg could not process this video.");
}

TEST_F(ModelWithToolsTest, RefusesAPortraitVideoAndClearsThePreviousSource)
{
    const char* const upright[] = {
        R"("width": 1080, "height": 1920)",
        R"("width": 1080, "height": 1080)",
        R"("width": 1920, "height": 1080, "side_data_list": [{"rotation": -90}])",
    };
    for (const char* const keys : upright) {
        installProbe(R"("width": 1080, "height": 1920, "side_data_list": [{"rotation": 90}])");
        load();
        installProbe(keys);
        choose();
        ASSERT_TRUE(becomesPhase(Phase::Kind::failed)) << keys;
        EXPECT_EQ(model().phaseMessage(),
                  "Choose a horizontal video. Stackreel only stacks crops from horizontal sources.");
        EXPECT_EQ(model().sourceURL(), "/clips/Beach day.MOV");
        EXPECT_EQ(model().mediaInfo(), std::nullopt);
        EXPECT_EQ(model().player(), nullptr);
        EXPECT_EQ(model().trimEnd(), 0);
        EXPECT_TRUE(model().timelineThumbnails().empty());
    }
}

TEST_F(ModelWithToolsTest, LeavesNoChildAndNoFileWhenCancelled)
{
    installWaitingTool();
    load();
    startExport();
    ASSERT_TRUE(eventually([this] { return isWaiting(); }));
    EXPECT_EQ(contentOf(destination), "half");
    model().exportTask()->cancel();
    ASSERT_TRUE(becomesPhase(Phase::Kind::ready));
    EXPECT_FALSE(std::filesystem::exists(destination));
}

TEST_F(ModelWithToolsTest, RunsNoToolWhenCancelledBeforeItIsFound)
{
    installWaitingTool();
    load();
    const QObject context;
    QObject::connect(&model(), &AppModel::phaseChanged, &context, [this] {
        if (model().phase() == Phase::exporting())
            model().exportTask()->cancel();
    });
    startExport();
    ASSERT_TRUE(becomesPhase(Phase::Kind::ready));
    EXPECT_FALSE(hasRun());
}

TEST_F(ModelWithToolsTest, LeavesNoChildAndNoFileWhenTheProgramQuits)
{
    installWaitingTool();
    load();
    startExport();
    ASSERT_TRUE(eventually([this] { return isWaiting(); }));
    ExportShutdown::endExport(model().exportTask());
    EXPECT_FALSE(std::filesystem::exists(destination));
    EXPECT_EQ(model().phase(), Phase::ready());
}

TEST_F(ModelWithToolsTest, ShowsTheLastLinesOfAFailedExportAndKeepsItsFile)
{
    installTool("printf half > \"$destination\"\necho 'Invalid data found' >&2\nexit 1\n");
    load();
    startExport();
    ASSERT_TRUE(becomesPhase(Phase::Kind::failed));
    EXPECT_EQ(model().phaseMessage(), "Invalid data found");
    EXPECT_EQ(contentOf(destination), "half");
}

TEST_F(ReplacingAFile, KeepsTheOldFileWhileTheExportRuns)
{
    installWaitingTool();
    load();
    startExport();
    ASSERT_TRUE(eventually([this] { return isWaiting(); }));
    EXPECT_EQ(contentOf(destination), "old");
    model().exportTask()->cancel();
    ASSERT_TRUE(becomesPhase(Phase::Kind::ready));
}

TEST_F(ReplacingAFile, PutsTheWholeExportInItsPlace)
{
    installTool("printf whole > \"$destination\"\n");
    load();
    startExport();
    ASSERT_TRUE(becomesPhase(Phase::Kind::complete));
    EXPECT_EQ(contentOf(destination), "whole");
    EXPECT_EQ(videos(), Names{"Beach day-vertical.mp4"});
}

TEST_F(ReplacingAFile, KeepsTheOldFileWhenCancelledOrQuit)
{
    installWaitingTool();
    load();
    startExport();
    ASSERT_TRUE(eventually([this] { return isWaiting(); }));
    ExportShutdown::endExport(model().exportTask());
    EXPECT_EQ(model().phase(), Phase::ready());
    EXPECT_EQ(contentOf(destination), "old");
    EXPECT_EQ(videos(), Names{"Beach day-vertical.mp4"});
}

TEST_F(ReplacingAFile, KeepsBothFilesWhenTheExportFails)
{
    load();
    const char* const ends[] = {"exit 1", "kill -9 $$", "kill -TERM $$",
                                "echo 'No space left on device' >&2; exit 228"};
    for (const char* const end : ends) {
        installTool("printf half > \"$destination\"\n" + std::string(end) + "\n");
        model().setPhase(Phase::ready());
        startExport();
        ASSERT_TRUE(becomesPhase(Phase::Kind::failed)) << end;
        EXPECT_EQ(contentOf(destination), "old") << end;
        EXPECT_EQ(contentOf(unfinished), "half") << end;
        std::filesystem::remove(unfinished);
    }
}

TEST_F(ReplacingAFile, LeavesNoOtherFileWhenNothingWasWritten)
{
    installTool("exit 1\n");
    load();
    startExport();
    ASSERT_TRUE(becomesPhase(Phase::Kind::failed));
    EXPECT_EQ(contentOf(destination), "old");
    EXPECT_EQ(videos(), Names{"Beach day-vertical.mp4"});
}

TEST_F(ReplacingAFile, KeepsTheOldFileWhenTheExportCannotBeRead)
{
    installTool("printf garbage > \"$destination\"\n");
    load();
    m_directory.writeExecutable("third_party/ffmpeg/bin/ffprobe", "#!/bin/sh\nexit 1\n");
    startExport();
    ASSERT_TRUE(becomesPhase(Phase::Kind::failed));
    EXPECT_EQ(model().phaseMessage(), "FFmpeg ended without an error but wrote a file that cannot be read.");
    EXPECT_EQ(contentOf(destination), "old");
    EXPECT_EQ(contentOf(unfinished), "garbage");
}

TEST_F(ModelWithToolsTest, FailsWhenTheEncoderSucceedsWithoutAFile)
{
    installTool("exit 0\n");
    load();
    startExport();
    ASSERT_TRUE(becomesPhase(Phase::Kind::failed));
    EXPECT_EQ(model().phaseMessage(), "FFmpeg ended without an error but wrote no file.");
}

TEST_F(ModelWithToolsTest, FailsWhenTheExportHasAnotherSize)
{
    installTool("printf whole > \"$destination\"\n");
    load();
    installProbe(
        "", R"({"streams": [{"codec_type": "video", "codec_name": "h264", "width": 1080, "height": 1350}]})");
    startExport();
    ASSERT_TRUE(becomesPhase(Phase::Kind::failed));
    EXPECT_EQ(model().phaseMessage(), "The export did not become what was asked for: its picture is 1080 × "
                                      "1350, not 1080 × 1920.");
}

TEST_F(ModelWithToolsTest, CanBeDestroyedDuringALoad)
{
    // The load owns a reference to the loader until it has ended.
    const std::weak_ptr<void> work = m_stills;
    choose();
    m_model.reset();
    m_stills.reset();
    EXPECT_TRUE(workEnds(work));
    EXPECT_EQ(m_journal->take(), Journal::Lines{"show open panel"});
}

TEST_F(ModelWithToolsTest, CanBeDestroyedWhileThumbnailsAreMade)
{
    const std::weak_ptr<void> work = m_stills;
    choose();
    ASSERT_TRUE(becomesPhase(Phase::Kind::ready));
    m_model.reset();
    m_stills.reset();
    EXPECT_TRUE(workEnds(work));
}

TEST_F(ModelWithToolsTest, CanBeDestroyedDuringAnExport)
{
    installWaitingTool();
    load();
    startExport();
    ASSERT_TRUE(eventually([this] { return isWaiting(); }));
    const auto task = model().exportTask();
    m_model.reset();
    EXPECT_FALSE(task->hasEnded());
    EXPECT_TRUE(std::filesystem::exists(destination)) << "the export continues";
    ExportShutdown::endExport(task);
    EXPECT_FALSE(std::filesystem::exists(destination));
}

} // namespace stackreel
