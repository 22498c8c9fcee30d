#include "media/CancellationError.h"
#include "tests/ui/views/ViewsTest.h"

#include <QAccessible>

#include <functional>

namespace stackreel
{

namespace
{

/// The rows of the notice for exports that run or wait although their source was replaced.
class BackgroundExportsTest : public ViewsTest
{
protected:
    using Items = std::vector<QQuickItem*>;

    BackgroundExportsTest() { window().load(); }

    /// Starts an export and replaces its source.
    void startExport(const std::filesystem::path& file)
    {
        window().startExport(file);
        window().load();
        settle();
    }
    /// The items of this name, one in each row, from the first row to the last.
    Items inRows(const char* name)
    {
        Items items;
        for (QQuickItem* each : itemAndDescendants(item("notice")))
            if (each->objectName() == QLatin1String(name))
                items.push_back(each);
        return items;
    }
    QStringList texts()
    {
        QStringList texts;
        for (QQuickItem* row : inRows("exportRow"))
            texts += text(*row->childItems().front());
        return texts;
    }
    QQuickItem& cancelButton(std::size_t row = 0) { return *inRows("cancelButton").at(row); }
    void clickCancel(std::size_t row)
    {
        const QPoint place = centre(cancelButton(row));
        press(place);
        release(place);
    }
    bool isCancelled(std::size_t call) { return fakes().exports.at(call).isCancelled(); }
    void endLast()
    {
        fakes().exports.back().task().fail(CancellationError());
        settle();
    }
    bool firstCropHasVisualFocus()
    {
        return child("topCrop", "body").hasActiveFocus() &&
               child("topCrop", "body").property("visualFocus").toBool();
    }
};

TEST_F(BackgroundExportsTest, AreShownFromTheReplacementOfTheirSourceToTheirEnd)
{
    window().startExport("/clips/a.mp4");
    settle();
    EXPECT_FALSE(item("notice").isVisible());
    window().load();
    settle();
    EXPECT_TRUE(item("notice").isVisible());
    EXPECT_EQ(texts(), QStringList(QStringLiteral("Exporting a.mp4")));
    EXPECT_FALSE(item("dismissButton").isVisible()) << "there is no message";
    fakes().exports.back().task().complete("/clips/a.mp4");
    settle();
    EXPECT_EQ(texts(), QStringList());
    EXPECT_EQ(text(item("noticeMessage")), QStringLiteral("Saved a.mp4"));
}

TEST_F(BackgroundExportsTest, AreShownWhileTheyWait)
{
    startExport("/clips/a.mp4");
    startExport("/clips/b.mp4");
    EXPECT_EQ(fakes().exports.size(), 1U);
    EXPECT_EQ(texts(), QStringList({QStringLiteral("Exporting a.mp4"), QStringLiteral("Exporting b.mp4")}));
}

TEST_F(BackgroundExportsTest, AreCancelledOneByOne)
{
    startExport("/clips/a.mp4");
    startExport("/clips/b.mp4");
    clickCancel(1);
    EXPECT_FALSE(isCancelled(0));
    EXPECT_EQ(texts(), QStringList(QStringLiteral("Exporting a.mp4")));
    EXPECT_EQ(text(item("noticeMessage")),
              QStringLiteral("b.mp4 was not exported. The export was cancelled."));
    clickCancel(0);
    EXPECT_TRUE(isCancelled(0));
    EXPECT_EQ(texts(), QStringList(QStringLiteral("Exporting a.mp4"))) << "it has not ended";
    endLast();
    EXPECT_EQ(texts(), QStringList());
    EXPECT_EQ(text(item("noticeMessage")),
              QStringLiteral("a.mp4 was not exported. The export was cancelled."));
    EXPECT_EQ(fakes().exports.size(), 1U) << "the other one never began";
}

TEST_F(BackgroundExportsTest, AreCancelledByTheKeyboard)
{
    for (const Qt::Key confirm : {Qt::Key_Space, Qt::Key_Return}) {
        startExport("/clips/a.mp4");
        focus("exportButton");
        key(Qt::Key_Tab);
        EXPECT_TRUE(cancelButton().hasActiveFocus());
        EXPECT_TRUE(cancelButton().property("visualFocus").toBool());
        key(confirm);
        EXPECT_TRUE(isCancelled(fakes().exports.size() - 1)) << confirm;
        EXPECT_TRUE(model().previewPlaying()) << "Space reached the window";
        endLast();
        click("dismissButton");
    }
}

TEST_F(BackgroundExportsTest, HaveButtonsWhoseNamesTellThemApart)
{
    QAccessible::setActive(true);
    startExport("/clips/a.mp4");
    startExport("/clips/b.mp4");
    QStringList names;
    for (QQuickItem* button : inRows("cancelButton"))
        names += QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name);
    EXPECT_EQ(names, QStringList({QStringLiteral("Cancel export of a.mp4"),
                                  QStringLiteral("Cancel export of b.mp4")}));
    QAccessible::queryAccessibleInterface(inRows("cancelButton").at(0))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(isCancelled(0));
}

TEST_F(BackgroundExportsTest, GiveTheFocusToTheFirstCropWhenTheyEnd)
{
    const std::function<void()> ends[] = {
        [this] {
            key(Qt::Key_Return);
            endLast();
        },
        [this] { fakes().exports.back().task().complete("/clips/a.mp4"); },
    };
    for (const auto& end : ends) {
        startExport("/clips/a.mp4");
        cancelButton().forceActiveFocus(Qt::TabFocusReason);
        settle();
        end();
        EXPECT_TRUE(becomesTrue([this] { return firstCropHasVisualFocus(); }));
    }
}

TEST_F(BackgroundExportsTest, GiveTheFocusBackAfterALoadIfTheyEndDuringTheLoad)
{
    startExport("/clips/a.mp4");
    cancelButton().forceActiveFocus(Qt::TabFocusReason);
    settle();
    model().chooseSource();
    fakes().openPanel->choose("/clips/b.mov");
    settle();
    endLast();
    fakes().inspections.back().task().complete(WindowWithFakes::clip());
    fakes().previews.back().task().complete("/clips/b.mov");
    settle();
    EXPECT_TRUE(becomesTrue([this] { return firstCropHasVisualFocus(); }));
}

TEST_F(BackgroundExportsTest, KeepTheFocusWhenAnotherOneEnds)
{
    startExport("/clips/a.mp4");
    startExport("/clips/b.mp4");
    cancelButton(1).forceActiveFocus(Qt::TabFocusReason);
    settle();
    fakes().exports.front().task().complete("/clips/a.mp4");
    settle();
    EXPECT_TRUE(cancelButton().hasActiveFocus());
    key(Qt::Key_Return);
    EXPECT_TRUE(isCancelled(1));
}

TEST_F(BackgroundExportsTest, ScrollToTheButtonThatHasTheFocus)
{
    window().window().resize(window().window().minimumSize());
    const std::string names[] = {"a", "b", "c", "d", "e", "f", "g", "h"};
    for (const std::string& name : names)
        startExport("/clips/" + name + ".mp4");
    const auto isShown = [this](std::size_t row) {
        return geometry("exportRows").contains(geometry(cancelButton(row)));
    };
    EXPECT_LE(geometry("notice").bottom(), item("contentView").height() / 2);
    EXPECT_TRUE(isShown(0));
    EXPECT_FALSE(isShown(7));
    cancelButton(7).forceActiveFocus(Qt::TabFocusReason);
    settle();
    EXPECT_TRUE(isShown(7));
    cancelButton(0).forceActiveFocus(Qt::BacktabFocusReason);
    settle();
    EXPECT_TRUE(isShown(0));
}

} // namespace

} // namespace stackreel
