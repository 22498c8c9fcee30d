#include "tests/ui/views/ViewsTest.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include <stdexcept>
#include <string>

namespace stackreel
{

namespace
{

class HintAndDropTest : public ViewsTest
{
protected:
    /// A property of an item's child that is not visible, such as a pointer handler.
    bool isTrue(const char* name, const char* type, const char* property)
    {
        for (const QObject* child : item(name).findChildren<QObject*>())
            if (child->inherits(type))
                return child->property(property).toBool();
        throw std::invalid_argument(std::string(name) + " has no " + type);
    }
    bool isHovered(const char* name) { return isTrue(name, "QQuickHoverHandler", "hovered"); }
    /// Whether the tool tip of the item is requested. It appears after a delay.
    bool requestsToolTip(const char* name) { return isTrue(name, "QQuickToolTip", "shown"); }
};

TEST_F(HintAndDropTest, ShowsAToolTipWhileHovered)
{
    enter(WindowModel::Ready);
    moveTo(centre(item("muteButton")));
    EXPECT_TRUE(becomesTrue([this] { return window().hasItem(QStringLiteral("hintText")); }));
    EXPECT_EQ(text(item("hintText")), QStringLiteral("Unmute preview"));
}

TEST_F(HintAndDropTest, ShowsAnElidedNameInFullInTheToolTip)
{
    const std::string name = std::string(150, 'w') + ".mov";
    window().load(WindowWithFakes::clip(), "/clips/" + name);
    settle();
    ASSERT_TRUE(item("status").property("truncated").toBool());
    moveTo(centre(item("status")));
    EXPECT_TRUE(requestsToolTip("status"));
    EXPECT_TRUE(becomesTrue([this] { return window().hasItem(QStringLiteral("hintText")); }));
    EXPECT_EQ(text(item("hintText")), QString::fromStdString(name));
}

TEST_F(HintAndDropTest, ShowsNoToolTipForANameThatFits)
{
    enter(WindowModel::Ready);
    moveTo(centre(item("title"))); // the pointer may still be over the status line
    moveTo(centre(item("status")));
    EXPECT_TRUE(isHovered("status"));
    EXPECT_FALSE(requestsToolTip("status"));
}

TEST_F(HintAndDropTest, IgnoresAFileDroppedOnTheWindow)
{
    windowModel().setAspectIndex(3);
    settle();
    QMimeData file;
    file.setUrls({QUrl(QStringLiteral("file:///clips/Beach%20day.MOV"))});
    file.setText(QStringLiteral("1600"));
    for (const char* name : {"emptyState", "widthField", "title", "inspector"}) {
        const QPoint place = centre(item(name));
        QDragEnterEvent come(place, Qt::CopyAction, &file, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window().window(), &come);
        EXPECT_FALSE(come.isAccepted()) << name;
        QDropEvent drop(place, Qt::CopyAction, &file, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window().window(), &drop);
        EXPECT_FALSE(drop.isAccepted()) << name;
    }
    settle();
    EXPECT_EQ(windowModel().phase(), WindowModel::Empty);
    EXPECT_EQ(fakes().openPanel->timesShown(), 0U);
    EXPECT_EQ(model().settings().customWidth, 1080);
}

TEST_F(HintAndDropTest, NoItemAcceptsDrops)
{
    const auto items = itemAndDescendants(root());
    EXPECT_GT(items.size(), 100U);
    for (const QQuickItem* each : items)
        EXPECT_FALSE(each->flags().testFlag(QQuickItem::ItemAcceptsDrops))
            << each->objectName().toStdString();
}

} // namespace

} // namespace stackreel
