#include "tests/ui/views/ViewsTest.h"

namespace stackreel
{

namespace
{

class NoticeTest : public ViewsTest
{
protected:
    NoticeTest() { enter(WindowModel::Ready); }
    void endExportOfAnotherSource(const char* message)
    {
        Q_EMIT model().exportOfReplacedSourceEnded(QString::fromUtf8(message));
        settle();
    }
};

TEST_F(NoticeTest, ShowsTheEndsOfExportsOfReplacedSourcesUntilItIsDismissed)
{
    EXPECT_FALSE(item("notice").isVisible());
    endExportOfAnotherSource("a.mp4 was not exported. The disk is full.");
    endExportOfAnotherSource("Saved b.mp4");
    EXPECT_TRUE(item("notice").isVisible());
    EXPECT_EQ(text(item("noticeText")),
              QStringLiteral("a.mp4 was not exported. The disk is full.\nSaved b.mp4"));
    click("dismissButton");
    EXPECT_FALSE(item("notice").isVisible());
    endExportOfAnotherSource("Saved c.mp4");
    EXPECT_EQ(text(item("noticeText")), QStringLiteral("Saved c.mp4"));
}

TEST_F(NoticeTest, CanBeDismissedByTheKeyboardAndReturnsTheFocusToTheCrops)
{
    endExportOfAnotherSource("Saved b.mp4");
    focus("dismissButton");
    settle();
    key(Qt::Key_Return);
    EXPECT_FALSE(item("notice").isVisible());
    EXPECT_TRUE(becomesTrue([this] { return child("topCrop", "body").hasActiveFocus(); }));
}

TEST_F(NoticeTest, FitsIntoTheSmallestWindowWithALongMessage)
{
    window().window().resize(window().window().minimumSize());
    endExportOfAnotherSource((std::string(400, 'w') + ".mp4 was not exported.").c_str());
    const QRectF notice = geometry("notice");
    EXPECT_GE(notice.left(), 0);
    EXPECT_LE(notice.right(), item("contentView").width());
    EXPECT_LE(notice.bottom(), item("contentView").height());
    EXPECT_GE(item("dismissButton").x(), item("noticeText").x() + item("noticeText").width());
}

} // namespace

} // namespace stackreel
