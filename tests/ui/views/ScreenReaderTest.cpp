#include "tests/ui/views/ViewsTest.h"

#include <QAccessible>

#include <set>

namespace stackreel
{

namespace
{

/// Tests what a screen reader reads, and the keyboard focus that it follows.
class ScreenReaderTest : public ViewsTest
{
protected:
    void SetUp() override
    {
        QAccessible::setActive(true);
        settle();
    }

    static QAccessibleInterface& accessible(QQuickItem& target)
    {
        return *QAccessible::queryAccessibleInterface(&target);
    }
    static QString description(QQuickItem& target)
    {
        return accessible(target).text(QAccessible::Description);
    }
    QQuickItem& top() { return child("topCrop", "body"); }
    QString announced() { return accessible(item("announcement")).text(QAccessible::Name); }
    QAccessibleTextInterface& widthText() { return *accessible(item("widthField")).textInterface(); }
};

TEST_F(ScreenReaderTest, ACropDescribesItsGeometryAndItsKeysUntilTheyAreUsed)
{
    enter(WindowModel::Ready);
    top().forceActiveFocus(Qt::TabFocusReason);
    EXPECT_EQ(description(top()), QStringLiteral("Left 77, top 151, width 875, height 778. "
                                                 "Arrow keys move the crop, with Control they resize it"));
    key(Qt::Key_Right);
    EXPECT_EQ(description(top()), QStringLiteral("Left 78, top 151, width 875, height 778"));
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(description(top()), QStringLiteral("Left 78, top 151, width 874, height 777"));
    child("bottomCrop", "body").forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(description(top()).contains(QStringLiteral("Arrow keys")));
}

TEST_F(ScreenReaderTest, ACropWithoutAClipHasNoGeometryInItsDescription)
{
    EXPECT_FALSE(description(top()).contains(QStringLiteral("Left")));
}

TEST_F(ScreenReaderTest, ThePickerDescribesTheHighlightedRowOfItsOpenList)
{
    focus("aspectPicker");
    key(Qt::Key_Return);
    EXPECT_EQ(description(item("aspectPicker")), QStringLiteral("9:16, 1 of 4"));
    key(Qt::Key_Down);
    EXPECT_EQ(description(item("aspectPicker")), QStringLiteral("4:5, 2 of 4"));
    EXPECT_EQ(model().settings().aspect, OutputAspect::portrait);
    key(Qt::Key_Return);
    EXPECT_EQ(description(item("aspectPicker")), QStringLiteral("4:5"));
    EXPECT_EQ(model().settings().aspect, OutputAspect::feed);
}

TEST_F(ScreenReaderTest, AMenuOpenedByKeyHasANameAndFocusesItsFirstItem)
{
    moveTo({600, 400}); // away from the menu bar, where hovering would open another menu
    key(Qt::Key_F10);
    EXPECT_TRUE(item("aboutItem").hasActiveFocus());
    QAccessibleInterface* menu = accessible(item("aboutItem")).parent();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->role(), QAccessible::PopupMenu);
    EXPECT_EQ(menu->text(QAccessible::Name), QStringLiteral("Stackreel"));
    key(Qt::Key_Right);
    EXPECT_TRUE(item("chooseVideoItem").hasActiveFocus());
}

TEST_F(ScreenReaderTest, AnnouncesEachStatusAsANotification)
{
    EXPECT_FALSE(item("announcement").isVisible());
    enter(WindowModel::Exporting);
    EXPECT_TRUE(item("announcement").isVisible());
    EXPECT_EQ(accessible(item("announcement")).role(), QAccessible::Notification);
    EXPECT_EQ(announced(), QStringLiteral("Rendering from the original video."));
    fakes().exports.back().task().complete("/clips/Beach day-vertical.mp4");
    settle();
    EXPECT_EQ(announced(), QStringLiteral("Saved Beach day-vertical.mp4"));
}

TEST_F(ScreenReaderTest, AnnouncesPlayPauseAndSwapAsNotifications)
{
    enter(WindowModel::Ready);
    key(Qt::Key_Space);
    EXPECT_EQ(announced(), QStringLiteral("Preview paused"));
    key(Qt::Key_Space);
    EXPECT_EQ(announced(), QStringLiteral("Preview plays"));
    click("swapButton");
    EXPECT_EQ(announced(), QStringLiteral("Top and bottom swapped"));
}

TEST_F(ScreenReaderTest, MovesTheFocusToTheFirstCropAfterAClipIsLoaded)
{
    focus("chooseFirstButton");
    settle();
    enter(WindowModel::Ready);
    EXPECT_TRUE(becomesTrue([this] { return top().hasActiveFocus(); }));
    EXPECT_TRUE(top().property("visualFocus").toBool());
}

TEST_F(ScreenReaderTest, DoesNotMoveAFocusThatCameByThePointer)
{
    item("chooseFirstButton").forceActiveFocus(Qt::MouseFocusReason);
    settle();
    enter(WindowModel::Ready);
    settle();
    EXPECT_FALSE(top().hasActiveFocus());
}

TEST_F(ScreenReaderTest, MovesTheFocusToTheChooseButtonAfterAFailedExport)
{
    enter(WindowModel::Ready);
    focus("exportButton");
    settle();
    window().startExport();
    settle();
    EXPECT_TRUE(item("exportButton").hasActiveFocus());
    fakes().exports.back().task().fail(std::runtime_error("The disk is full."));
    EXPECT_TRUE(becomesTrue([this] { return item("chooseButton").hasActiveFocus(); }));
    EXPECT_EQ(announced(), QStringLiteral("The disk is full."));
    Q_EMIT model().exportOfReplacedSourceEnded(QStringLiteral("Saved a.mp4"));
    EXPECT_EQ(announced(), QStringLiteral("Saved a.mp4"));
}

TEST_F(ScreenReaderTest, AFieldExposesItsTextItsSelectionAndItsWords)
{
    windowModel().setAspectIndex(3);
    focus("widthField");
    settle();
    EXPECT_EQ(accessible(item("widthField")).text(QAccessible::Name), QStringLiteral("Width"));
    EXPECT_EQ(accessible(item("widthField")).text(QAccessible::Value), windowModel().customWidth());
    EXPECT_EQ(widthText().text(0, widthText().characterCount()), windowModel().customWidth());
    EXPECT_EQ(widthText().selectionCount(), 1);
    int start = -1;
    int end = -1;
    // Qt's own implementation of this call never returns.
    EXPECT_EQ(widthText().textAtOffset(widthText().characterCount(), QAccessible::WordBoundary, &start, &end),
              QString());
    EXPECT_EQ(start, widthText().characterCount());
    EXPECT_EQ(widthText().textAtOffset(widthText().characterCount(), QAccessible::LineBoundary, &start, &end),
              windowModel().customWidth());
    EXPECT_FALSE(widthText().textAtOffset(0, QAccessible::WordBoundary, &start, &end).isEmpty());
}

/// Tests which changes of the playhead's time are reported to screen readers.
class PlayheadReportTest : public ScreenReaderTest
{
protected:
    void SetUp() override
    {
        ScreenReaderTest::SetUp();
        enter(WindowModel::Ready);
        QObject::connect(&windowModel(), &WindowModel::currentTimeChanged, &windowModel(),
                         [this] { m_reported.insert(!changesByItself("videoPosition")); });
    }

    bool changesByItself(const char* slider) { return item(slider).property("changesByItself").toBool(); }
    void playerReports(double seconds)
    {
        fakes().players->last().tick(MediaTime::fromSeconds(seconds));
        settle();
    }
    std::set<bool> reported() const { return m_reported; }

private:
    std::set<bool> m_reported;
};

TEST_F(PlayheadReportTest, SuppressesTheTimesOfThePlayer)
{
    ASSERT_TRUE(model().previewPlaying());
    playerReports(4);
    EXPECT_EQ(reported(), std::set{false});
}

TEST_F(PlayheadReportTest, SuppressesATimeOfThePlayerThatArrivesAfterAPause)
{
    model().togglePreviewPlayback();
    ASSERT_FALSE(model().previewPlaying());
    playerReports(4);
    EXPECT_EQ(reported(), std::set{false});
}

TEST_F(PlayheadReportTest, SuppressesThePlayheadThatFollowsATrim)
{
    model().togglePreviewPlayback();
    focus("trimStartHandle");
    key(Qt::Key_Right);
    EXPECT_EQ(reported(), std::set{false});
    EXPECT_FALSE(changesByItself("trimStartHandle"));
}

TEST_F(PlayheadReportTest, ReportsAStepWhilePlaying)
{
    focus("videoPosition");
    key(Qt::Key_Right);
    EXPECT_EQ(reported(), std::set{true});
}

TEST_F(PlayheadReportTest, ReportsADrag)
{
    const QPoint start = centre(item("strip"));
    press(start);
    moveTo(start + QPoint(50, 0));
    EXPECT_EQ(reported(), std::set{true});
    release(start + QPoint(50, 0));
}

} // namespace

} // namespace stackreel
