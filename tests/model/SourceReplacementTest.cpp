#include "media/CancellationError.h"
#include "media/MediaToolError.h"
#include "tests/model/SourceLoadingTest.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace stackreel
{

namespace
{

using LoadingTwoSources = SourceLoadingTest;
using Thumbnails = SourceLoadingTest;
using ALoadWithoutItsModel = SourceLoadingTest;

} // namespace

TEST_F(LoadingTwoSources, TearsDownTheFirstPlayer)
{
    load(20, "/clips/a.mov");
    choose("/clips/b.mov");
    Lines expected = joined({"show open panel"}, resetChanges("/clips/b.mov"));
    EXPECT_EQ(takeJournal(), joined(expected, {"cancel thumbnails 1", "player 1: remove observer 1",
                                               "player 1: close", "player 1: pause", "player none",
                                               "previewPlaying false", "inspect 2: /clips/b.mov"}));

    finishLoad(30);
    const Lines lines = takeJournal();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "player 1: close"), 0) << "it was released before";
}

TEST_F(LoadingTwoSources, DropsTheObserverOfARemovedPlayer)
{
    load(20, "/clips/a.mov");
    model().setPlayer(nullptr);
    choose("/clips/b.mov");
    // The observers of two players may have the same token, so the token of the previous player must not be
    // used any more.
    model().setPlayer(m_services.players->make());
    takeJournal();
    choose("/clips/c.mov");
    const Lines lines = takeJournal();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "player 2: remove observer 1"), 0);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "player 2: pause"), 1);
}

TEST_F(LoadingTwoSources, NeverShowsTheThumbnailsOfTheFirst)
{
    load(20, "/clips/a.mov");
    choose("/clips/b.mov");
    EXPECT_TRUE(m_services.thumbnails.at(0).isCancelled());
    m_services.thumbnails.at(0).task().complete(images(12));
    EXPECT_TRUE(model().timelineThumbnails().empty());

    finishLoad(30);
    runQueuedTasks();
    EXPECT_FALSE(m_services.thumbnails.at(1).isCancelled());
    m_services.thumbnails.at(1).task().complete(images(5));
    EXPECT_EQ(model().timelineThumbnails().size(), 5U);
}

TEST_F(LoadingTwoSources, DropsThumbnailsOfTheFirstThatBeginWithTheSecondLoad)
{
    choose("/clips/a.mov");
    finishLoad(20);
    // The thumbnails are queued before the second load, so they begin first. The second load then cancels
    // them.
    model().chooseSource();
    m_services.openPanel->choose("/clips/b.mov");
    runQueuedTasks();
    ASSERT_EQ(m_services.thumbnails.size(), 1U);
    EXPECT_TRUE(m_services.thumbnails.at(0).isCancelled());
    m_services.thumbnails.at(0).task().complete(images(12));
    EXPECT_TRUE(model().timelineThumbnails().empty());
}

TEST_F(LoadingTwoSources, CancelsTheFirstWhenTheSecondIsChosen)
{
    choose("/clips/a.mov");
    model().chooseSource();
    EXPECT_FALSE(m_services.inspections.at(0).isCancelled()) << "the panel can still be dismissed";
    m_services.openPanel->choose("/clips/b.mov");
    EXPECT_TRUE(m_services.inspections.at(0).isCancelled());
    runQueuedTasks();
    EXPECT_FALSE(m_services.inspections.at(1).isCancelled());

    m_services.inspections.at(1).task().complete(clip(30));
    choose("/clips/c.mov");
    EXPECT_TRUE(m_services.previews.at(0).isCancelled());
}

TEST_F(LoadingTwoSources, KeepsTheSecondWhenTheFirstEndsAfterIt)
{
    choose("/clips/a.mov");
    m_services.inspections.at(0).task().complete(clip(10));
    choose("/clips/b.mov");
    m_services.inspections.at(1).task().complete(clip(30));
    m_services.previews.at(1).task().complete("/clips/b.mov");
    runQueuedTasks();
    takeJournal();

    m_services.previews.at(0).task().complete("/tmp/Stackreel/a.mp4");
    runQueuedTasks();
    EXPECT_EQ(takeJournal(), Lines());
    EXPECT_EQ(model().sourceURL(), "/clips/b.mov");
    EXPECT_EQ(model().mediaInfo()->duration, 30);
    EXPECT_EQ(model().phase(), Phase::ready());
}

TEST_F(LoadingTwoSources, KeepsTheSecondWhenTheFirstFailsAfterIt)
{
    choose("/clips/a.mov");
    choose("/clips/b.mov");
    m_services.inspections.at(1).task().complete(clip(30));
    m_services.previews.at(0).task().complete("/clips/b.mov");
    takeJournal();
    m_services.inspections.at(0).task().fail(MediaToolError::noVideo());
    EXPECT_EQ(takeJournal(), Lines());
    EXPECT_EQ(model().phase(), Phase::ready());
}

TEST_F(LoadingTwoSources, StaysInPreparingWhenTheFirstEndsBeforeTheSecond)
{
    using End = std::function<void()>;
    const End ends[] = {
        [this] { m_services.inspections.back().task().complete(clip(10)); },
        [this] { m_services.inspections.back().task().fail(MediaToolError::noVideo()); },
        [this] { m_services.inspections.back().task().fail(CancellationError()); },
    };
    for (const End& end : ends) {
        choose("/clips/a.mov");
        model().chooseSource();
        m_services.openPanel->choose("/clips/b.mov");
        takeJournal();
        end();
        EXPECT_EQ(takeJournal(), Lines());
        runQueuedTasks();
        EXPECT_EQ(model().phase(), Phase::preparing());
        EXPECT_EQ(m_services.inspections.back().arguments(), "/clips/b.mov");
    }
    EXPECT_EQ(m_services.previews.size(), 0U) << "a superseded load makes no preview";
}

TEST_F(LoadingTwoSources, NeverBeginsTheFirstWhenTheSecondIsChosenBefore)
{
    model().chooseSource();
    m_services.openPanel->choose("/clips/a.mov");
    model().chooseSource();
    m_services.openPanel->choose("/clips/b.mov");
    runQueuedTasks();
    ASSERT_EQ(m_services.inspections.size(), 1U);
    EXPECT_EQ(m_services.inspections.back().arguments(), "/clips/b.mov");
    EXPECT_EQ(model().sourceURL(), "/clips/b.mov");
}

TEST_F(Thumbnails, ArePublishedWhenTheyAreReady)
{
    load(20);
    m_services.thumbnails.back().task().complete(images(7));
    EXPECT_EQ(takeJournal(), Lines{"timelineThumbnails 7"});
}

TEST_F(Thumbnails, DoNotKeepTheModelAlive)
{
    load(20);
    destroyModel();
    m_services.thumbnails.back().task().complete(images(12));
    EXPECT_EQ(takeJournal(), Lines()) << "they are not cancelled either";
}

TEST_F(Thumbnails, AreNotStartedAfterTheModelIsDestroyed)
{
    choose("/clips/a.mov");
    finishLoad(20);
    destroyModel();
    runQueuedTasks();
    EXPECT_EQ(m_services.thumbnails.size(), 0U);
}

TEST_F(ALoadWithoutItsModel, EndsAfterTheProbe)
{
    choose("/clips/a.mov");
    destroyModel();
    takeJournal();
    m_services.inspections.back().task().complete(clip(20));
    EXPECT_EQ(takeJournal(), Lines());
    EXPECT_EQ(m_services.previews.size(), 0U) << "no preview copy is made without a model";
}

TEST_F(ALoadWithoutItsModel, EndsAfterAFailedProbe)
{
    choose("/clips/a.mov");
    destroyModel();
    takeJournal();
    m_services.inspections.back().task().fail(MediaToolError::noVideo());
    EXPECT_EQ(takeJournal(), Lines());
}

TEST_F(ALoadWithoutItsModel, EndsAfterThePreview)
{
    choose("/clips/a.mov");
    m_services.inspections.back().task().complete(clip(20));
    destroyModel();
    takeJournal();
    m_services.previews.back().task().complete("/clips/a.mov");
    runQueuedTasks();
    EXPECT_EQ(takeJournal(), Lines());
}

TEST_F(ALoadWithoutItsModel, EndsAfterAFailedPreview)
{
    choose("/clips/a.mov");
    m_services.inspections.back().task().complete(clip(20));
    destroyModel();
    takeJournal();
    m_services.previews.back().task().fail(std::runtime_error("no"));
    EXPECT_EQ(takeJournal(), Lines());
}

} // namespace stackreel
