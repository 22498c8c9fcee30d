#include "media/MediaToolError.h"
#include "tests/model/SourceLoadingTest.h"

#include <algorithm>
#include <stdexcept>

namespace stackreel
{

namespace
{

using LoadingTwoSources = SourceLoadingTest;
using Thumbnails = SourceLoadingTest;
using ALoadWithoutItsModel = SourceLoadingTest;

} // namespace

TEST_F(LoadingTwoSources, TearsTheFirstPlayerDown)
{
    load(20, "/clips/a.mov");
    choose("/clips/b.mov");
    Lines expected = joined({"show open panel"}, forgotten("/clips/b.mov"));
    EXPECT_EQ(happened(), joined(expected, {"cancel thumbnails 1", "player 1: remove observer 1",
                                            "looper 1: disable", "player 1: pause", "player none",
                                            "previewPlaying false", "inspect 2: /clips/b.mov"}));

    finishLoad(30);
    const Lines lines = happened();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "looper 1: disable"), 0) << "it was let go of";
}

TEST_F(LoadingTwoSources, ForgetsTheObserverOfAPlayerThatIsGone)
{
    load(20, "/clips/a.mov");
    model().setPlayer(nullptr);
    choose("/clips/b.mov");
    // Observers of different players may have equal tokens.
    model().setPlayer(m_world.playback->makePlayer());
    happened();
    choose("/clips/c.mov");
    const Lines lines = happened();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "player 2: remove observer 1"), 0);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "player 2: pause"), 1);
}

TEST_F(LoadingTwoSources, NeverShowsTheThumbnailsOfTheFirst)
{
    load(20, "/clips/a.mov");
    choose("/clips/b.mov");
    EXPECT_TRUE(m_world.thumbnails.at(0).isCancelled());
    m_world.thumbnails.at(0).task().complete(images(12));
    EXPECT_TRUE(model().timelineThumbnails().empty());

    finishLoad(30);
    runQueuedTasks();
    EXPECT_FALSE(m_world.thumbnails.at(1).isCancelled());
    m_world.thumbnails.at(1).task().complete(images(5));
    EXPECT_EQ(model().timelineThumbnails().size(), 5U);
}

TEST_F(LoadingTwoSources, DropsThumbnailsOfTheFirstThatBeginLate)
{
    choose("/clips/a.mov");
    model().chooseSource();
    m_world.openPanel->choose("/clips/b.mov");
    // The second load is queued before the thumbnails of the first are, and cancels them before they begin.
    finishLoad(20);
    runQueuedTasks();
    ASSERT_EQ(m_world.thumbnails.size(), 1U);
    EXPECT_TRUE(m_world.thumbnails.at(0).isCancelled());
    m_world.thumbnails.at(0).task().complete(images(12));
    EXPECT_TRUE(model().timelineThumbnails().empty());
}

TEST_F(LoadingTwoSources, LetsEachRunToItsEnd)
{
    choose("/clips/a.mov");
    choose("/clips/b.mov");
    EXPECT_EQ(model().sourceURL(), "/clips/b.mov");

    // The one chosen last is faster; the other overtakes it at each step it reaches later.
    m_world.inspections.at(1).task().complete(clip(30));
    m_world.previews.at(0).task().complete("/clips/b.mov");
    EXPECT_EQ(model().trimEnd(), 30);
    EXPECT_EQ(model().phase(), Phase::ready());
    runQueuedTasks();
    happened();

    m_world.inspections.at(0).task().complete(clip(10));
    m_world.previews.at(1).task().complete("/clips/a.mov");
    EXPECT_EQ(model().sourceURL(), "/clips/b.mov") << "was written by the second, in its first step";
    EXPECT_EQ(model().trimEnd(), 10);
    EXPECT_EQ(model().mediaInfo()->duration, 10);
    EXPECT_EQ(model().player().get(), &m_world.playback->player(2));
    EXPECT_EQ(model().phase(), Phase::ready());
    runQueuedTasks();
    EXPECT_TRUE(m_world.thumbnails.at(0).isCancelled());
    EXPECT_FALSE(m_world.thumbnails.at(1).isCancelled());
    const Lines lines = happened();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "looper 1: disable"), 1);
}

TEST_F(LoadingTwoSources, ShowsAFailureThatComesLast)
{
    choose("/clips/a.mov");
    choose("/clips/b.mov");
    m_world.inspections.at(1).task().complete(clip(30));
    m_world.previews.at(0).task().complete("/clips/b.mov");
    m_world.inspections.at(0).task().fail(MediaToolError::noVideo());
    EXPECT_EQ(model().phase(), Phase::failed("This file does not contain a video stream."));
    EXPECT_EQ(model().player().get(), &m_world.playback->player(1));
}

TEST_F(Thumbnails, ArePublishedAsTheyCome)
{
    load(20);
    m_world.thumbnails.back().task().complete(images(7));
    EXPECT_EQ(happened(), Lines{"timelineThumbnails 7"});
}

TEST_F(Thumbnails, DoNotKeepTheModelAlive)
{
    load(20);
    destroyModel();
    m_world.thumbnails.back().task().complete(images(12));
    EXPECT_EQ(happened(), Lines()) << "they are not cancelled either";
}

TEST_F(Thumbnails, AreNotBegunForAModelThatIsGone)
{
    choose("/clips/a.mov");
    finishLoad(20);
    destroyModel();
    runQueuedTasks();
    EXPECT_EQ(m_world.thumbnails.size(), 0U);
}

TEST_F(ALoadWithoutItsModel, EndsAfterTheProbe)
{
    choose("/clips/a.mov");
    destroyModel();
    happened();
    m_world.inspections.back().task().complete(clip(20));
    EXPECT_EQ(happened(), Lines());
    EXPECT_EQ(m_world.previews.size(), 0U) << "no proxy is made for nobody";
}

TEST_F(ALoadWithoutItsModel, EndsAfterAFailedProbe)
{
    choose("/clips/a.mov");
    destroyModel();
    happened();
    m_world.inspections.back().task().fail(MediaToolError::noVideo());
    EXPECT_EQ(happened(), Lines());
}

TEST_F(ALoadWithoutItsModel, EndsAfterThePreview)
{
    choose("/clips/a.mov");
    m_world.inspections.back().task().complete(clip(20));
    destroyModel();
    happened();
    m_world.previews.back().task().complete("/clips/a.mov");
    runQueuedTasks();
    EXPECT_EQ(happened(), Lines());
}

TEST_F(ALoadWithoutItsModel, EndsAfterAFailedPreview)
{
    choose("/clips/a.mov");
    m_world.inspections.back().task().complete(clip(20));
    destroyModel();
    happened();
    m_world.previews.back().task().fail(std::runtime_error("no"));
    EXPECT_EQ(happened(), Lines());
}

} // namespace stackreel
