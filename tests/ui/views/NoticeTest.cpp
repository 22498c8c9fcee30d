#include "tests/ui/views/ViewsTest.h"

#include <QAccessible>

namespace stackreel
{

namespace
{

/// The messages about exports whose source was replaced.
class NoticeTest : public ViewsTest
{
protected:
    NoticeTest() { enter(WindowModel::Ready); }
    void endExportOfAnotherSource(const QString& message)
    {
        Q_EMIT model().exportOfReplacedSourceEnded(message);
        settle();
    }
    /// The visible texts of the notice that contain this text.
    std::vector<QQuickItem*> textsWith(QStringView part)
    {
        std::vector<QQuickItem*> texts;
        for (QQuickItem* each : itemAndDescendants(item("notice")))
            if (each->inherits("QQuickText") && each->isVisible() && text(*each).contains(part))
                texts.push_back(each);
        return texts;
    }
    QQuickItem& textWith(QStringView part)
    {
        const auto texts = textsWith(part);
        if (texts.size() != 1)
            throw std::invalid_argument(std::to_string(texts.size()) + " texts");
        return *texts.front();
    }
    QRectF onScreen(const QQuickItem& target)
    {
        return target.mapRectToScene(QRectF(0, 0, target.width(), target.height()));
    }
    /// Whether all of the text can be seen: it is not elided, and no part of it is clipped.
    bool showsAllOf(QStringView part)
    {
        QQuickItem& shown = textWith(part);
        QRectF area = onScreen(item("notice"));
        for (const QQuickItem* above = shown.parentItem(); above != nullptr; above = above->parentItem())
            if (above->clip())
                area &= onScreen(*above);
        return !shown.property("truncated").toBool() && area.contains(onScreen(shown));
    }
    static QString manyLines()
    {
        QString message = QStringLiteral("a.mp4 was not exported. ");
        for (int line = 1; line <= 12; ++line)
            message += QStringLiteral("line %1 of the tool\n").arg(line);
        return message + QStringLiteral("the last line");
    }
};

TEST_F(NoticeTest, ShowsEachMessageUntilItIsDismissedTheNewestFirst)
{
    EXPECT_FALSE(item("notice").isVisible());
    endExportOfAnotherSource(QStringLiteral("a.mp4 was not exported. The disk is full."));
    endExportOfAnotherSource(QStringLiteral("Saved b.mp4"));
    EXPECT_TRUE(item("notice").isVisible());
    EXPECT_EQ(text(textWith(u"a.mp4")), QStringLiteral("a.mp4 was not exported. The disk is full."));
    EXPECT_EQ(text(textWith(u"b.mp4")), QStringLiteral("Saved b.mp4"));
    EXPECT_LT(geometry(textWith(u"b.mp4")).bottom(), geometry(textWith(u"a.mp4")).top());
    click("dismissButton");
    EXPECT_FALSE(item("notice").isVisible());
    endExportOfAnotherSource(QStringLiteral("Saved c.mp4"));
    EXPECT_TRUE(showsAllOf(u"c.mp4"));
    EXPECT_EQ(textsWith(u"b.mp4").size(), 0U);
}

TEST_F(NoticeTest, ShowsTheNewestMessageInFullAfterOneOfManyLines)
{
    endExportOfAnotherSource(manyLines());
    endExportOfAnotherSource(QStringLiteral("Saved b.mp4"));
    EXPECT_TRUE(showsAllOf(u"Saved b.mp4"));
}

TEST_F(NoticeTest, ShowsAnElidedMessageInFullInTheToolTipAndToScreenReaders)
{
    QAccessible::setActive(true);
    settle();
    endExportOfAnotherSource(manyLines());
    QQuickItem& shown = textWith(u"a.mp4");
    EXPECT_TRUE(shown.property("truncated").toBool());
    EXPECT_EQ(shown.property("lineCount").toInt(), 2);
    EXPECT_TRUE(text(shown).contains(QStringLiteral("line 1 of the tool line 2 of the tool")));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&shown)->text(QAccessible::Name), manyLines());
    moveTo(centre(shown));
    EXPECT_TRUE(becomesTrue([this] { return window().hasItem(QStringLiteral("hintText")); }));
    EXPECT_EQ(text(item("hintText")), manyLines());
}

TEST_F(NoticeTest, FitsIntoTheSmallestWindowWithManyLongMessages)
{
    window().window().resize(window().window().minimumSize());
    for (int count = 1; count <= 20; ++count)
        endExportOfAnotherSource(QString(400, u'w') + QStringLiteral(".mp4 was not exported."));
    endExportOfAnotherSource(QStringLiteral("Saved b.mp4"));
    EXPECT_TRUE(showsAllOf(u"Saved b.mp4"));
    const QRectF notice = geometry("notice");
    EXPECT_GE(notice.left(), 0);
    EXPECT_LE(notice.right(), item("contentView").width());
    EXPECT_LE(notice.bottom(), item("contentView").height() / 2);
    EXPECT_GE(geometry("dismissButton").left(), geometry(textWith(u"Saved b.mp4")).right());
}

TEST_F(NoticeTest, ScrollsToOlderMessagesByKeysAndBackToANewOne)
{
    endExportOfAnotherSource(QStringLiteral("Saved a.mp4"));
    for (int count = 1; count <= 8; ++count)
        endExportOfAnotherSource(QStringLiteral("Saved %1.mp4").arg(count));
    EXPECT_TRUE(showsAllOf(u"8.mp4"));
    EXPECT_FALSE(showsAllOf(u"a.mp4"));
    focus("exportButton");
    key(Qt::Key_Tab);
    EXPECT_TRUE(item("messageRows").hasActiveFocus());
    EXPECT_TRUE(child("messageRows", "focusRing").isVisible());
    for (int press = 1; press <= 6; ++press)
        key(Qt::Key_Down);
    EXPECT_TRUE(showsAllOf(u"a.mp4"));
    key(Qt::Key_Up);
    EXPECT_FALSE(showsAllOf(u"a.mp4"));
    endExportOfAnotherSource(QStringLiteral("Saved b.mp4"));
    EXPECT_TRUE(showsAllOf(u"b.mp4"));
}

TEST_F(NoticeTest, CanBeDismissedByTheKeyboardAndReturnsTheFocusToTheCrops)
{
    endExportOfAnotherSource(QStringLiteral("Saved b.mp4"));
    focus("dismissButton");
    settle();
    key(Qt::Key_Return);
    EXPECT_FALSE(item("notice").isVisible());
    EXPECT_TRUE(becomesTrue([this] { return child("topCrop", "body").hasActiveFocus(); }));
}

TEST_F(NoticeTest, ShowsTheArrowCursorOverTheCrops)
{
    model().setTopRegion({.x = 0, .y = 0, .width = 1, .height = 1});
    for (int count = 1; count <= 7; ++count)
        endExportOfAnotherSource(QStringLiteral("Saved %1.mp4").arg(count));
    const QRectF crop = onScreen(child("topCrop", "body"));
    const QRectF notice = onScreen(item("notice"));
    const QRectF button = onScreen(item("dismissButton"));
    const QPointF places[] = {centre(textWith(u"4.mp4")),
                              button.center() - QPointF(button.width() / 2 - 4, 0),
                              notice.bottomLeft() + QPointF(3, -3)};
    for (const QPointF& place : places) {
        const QPointF below(place.x(), notice.bottom() + 10);
        ASSERT_TRUE(crop.contains(place) && crop.contains(below)) << place.x() << ", " << place.y();
        moveTo(below.toPoint());
        EXPECT_EQ(cursor(), Qt::SizeAllCursor);
        moveTo(place.toPoint());
        EXPECT_EQ(cursor(), Qt::ArrowCursor) << place.x() << ", " << place.y();
    }
}

} // namespace

} // namespace stackreel
