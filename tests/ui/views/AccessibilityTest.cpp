#include "system/Version.h"
#include "tests/ui/views/ViewsTest.h"

#include <QAccessible>

#include <algorithm>
#include <cmath>

namespace stackreel
{

namespace
{

/// The window as assistive technology sees it.
class AccessibilityTest : public ViewsTest
{
protected:
    struct Node {
        QAccessible::Role role;
        QString name;

        bool operator==(const Node&) const = default;
    };

    void SetUp() override
    {
        QAccessible::setActive(true);
        settle();
    }

    static QAccessibleInterface& accessible(QObject& object)
    {
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&object);
        if (interface == nullptr)
            throw std::invalid_argument("no accessible interface: " + object.objectName().toStdString());
        return *interface;
    }
    QAccessibleInterface& accessible(const char* name) { return accessible(item(name)); }

    /// The title of a menu in the menu bar.
    QAccessibleInterface& menuTitle(const char* text)
    {
        for (QQuickItem* title : item("menuBar").findChildren<QQuickItem*>())
            if (title->inherits("QQuickMenuBarItem") && title->property("text") == QLatin1String(text))
                return accessible(*title->property("contentItem").value<QQuickItem*>());
        throw std::invalid_argument(std::string("no menu ") + text);
    }

    static void perform(QAccessibleInterface& target, const QString& action)
    {
        ASSERT_TRUE(target.actionInterface()->actionNames().contains(action)) << action.toStdString();
        target.actionInterface()->doAction(action);
    }

    /// All visible accessible objects of the window.
    std::vector<Node> visibleNodes()
    {
        std::vector<Node> nodes;
        collect(accessible(window().window()), nodes);
        return nodes;
    }

    bool shows(QAccessible::Role role, QStringView name)
    {
        const auto nodes = visibleNodes();
        return std::find(nodes.begin(), nodes.end(), Node{role, name.toString()}) != nodes.end();
    }

private:
    static void collect(QAccessibleInterface& parent, std::vector<Node>& nodes)
    {
        for (int index = 0; index < parent.childCount(); ++index) {
            QAccessibleInterface* child = parent.child(index);
            if (child == nullptr || child->state().invisible)
                continue;
            nodes.push_back({child->role(), child->text(QAccessible::Name)});
            collect(*child, nodes);
        }
    }
};

TEST_F(AccessibilityTest, EveryControlHasItsRoleAndItsVisibleText)
{
    windowModel().setAspectIndex(3);
    enter(WindowModel::Ready);
    EXPECT_TRUE(shows(QAccessible::Button, u"Choose video"));
    EXPECT_TRUE(shows(QAccessible::RadioButton, u"Top"));
    EXPECT_TRUE(shows(QAccessible::RadioButton, u"Bottom"));
    EXPECT_TRUE(shows(QAccessible::Button, u"Pause preview"));
    EXPECT_TRUE(shows(QAccessible::Button, u"Unmute preview"));
    EXPECT_TRUE(shows(QAccessible::Slider, u"Video position"));
    EXPECT_TRUE(shows(QAccessible::Slider, u"Trim start"));
    EXPECT_TRUE(shows(QAccessible::Slider, u"Trim end"));
    EXPECT_TRUE(shows(QAccessible::ComboBox, u"Aspect ratio"));
    EXPECT_TRUE(shows(QAccessible::EditableText, u"Width"));
    EXPECT_TRUE(shows(QAccessible::EditableText, u"Height"));
    EXPECT_TRUE(shows(QAccessible::Button, u"Swap top and bottom"));
    EXPECT_TRUE(shows(QAccessible::CheckBox, u"Include audio"));
    EXPECT_TRUE(shows(QAccessible::Button, u"Export vertical video"));
    EXPECT_TRUE(shows(QAccessible::StatusBar, u"Beach day.MOV"));
    EXPECT_TRUE(shows(QAccessible::StaticText, u"1920 \u00d7 1080"));
    EXPECT_TRUE(shows(QAccessible::StaticText, u"0:00 to 0:20"));
}

TEST_F(AccessibilityTest, TheEmptyWindowExposesItsInstructionsButNotItsIcon)
{
    EXPECT_TRUE(shows(QAccessible::Button, u"Choose a video"));
    EXPECT_TRUE(shows(QAccessible::StatusBar, u"Choose a horizontal video to begin."));
    EXPECT_FALSE(shows(QAccessible::Button, u"Choose video"));
    for (const Node& node : visibleNodes())
        EXPECT_NE(node.role, QAccessible::Graphic);
}

TEST_F(AccessibilityTest, ThePreviewControlsAreAGroupOfTwoButtons)
{
    enter(WindowModel::Ready);
    QAccessibleInterface& group = accessible("previewControls");
    EXPECT_EQ(group.role(), QAccessible::Grouping);
    ASSERT_EQ(group.childCount(), 2);
    EXPECT_EQ(group.child(0)->text(QAccessible::Name), QStringLiteral("Pause preview"));
}

TEST_F(AccessibilityTest, ExposesOneNamedProgressBarDuringAnExport)
{
    enter(WindowModel::Exporting);
    EXPECT_TRUE(shows(QAccessible::ProgressBar, u"Export in progress"));
    EXPECT_TRUE(shows(QAccessible::Button, u"Cancel export"));
    const auto nodes = visibleNodes();
    EXPECT_EQ(std::count_if(nodes.begin(), nodes.end(),
                            [](const Node& node) { return node.role == QAccessible::ProgressBar; }),
              1);
}

TEST_F(AccessibilityTest, EveryVisibleControlHasAName)
{
    windowModel().setAspectIndex(3);
    enter(WindowModel::Ready);
    for (const Node& node : visibleNodes())
        for (const QAccessible::Role role :
             {QAccessible::Button, QAccessible::Slider, QAccessible::CheckBox, QAccessible::RadioButton,
              QAccessible::ComboBox, QAccessible::EditableText})
            EXPECT_FALSE(node.role == role && node.name.isEmpty()) << role;
}

TEST_F(AccessibilityTest, ThePressActionClicksButtons)
{
    enter(WindowModel::Ready);
    perform(accessible("playButton"), QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(model().previewPlaying());
    perform(accessible("muteButton"), QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(model().previewMuted());
    perform(accessible("swapButton"), QAccessibleActionInterface::pressAction());
    EXPECT_EQ(model().selectedCrop(), 1);
    perform(accessible("chooseButton"), QAccessibleActionInterface::pressAction());
    EXPECT_EQ(fakes().openPanel->timesShown(), 2U);
    perform(accessible("exportButton"), QAccessibleActionInterface::pressAction());
    EXPECT_EQ(fakes().savePanel->timesShown(), 1U);
}

TEST_F(AccessibilityTest, ADisabledButtonIsDescribedAsUnavailableAndIgnoresThePressAction)
{
    EXPECT_EQ(accessible("exportButton").text(QAccessible::Description), QStringLiteral("Not available now"));
    accessible("exportButton").actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(fakes().savePanel->timesShown(), 0U);
    enter(WindowModel::Ready);
    EXPECT_EQ(accessible("exportButton").text(QAccessible::Description), QString());
}

TEST_F(AccessibilityTest, TheSwitchExposesItsStateAndCanBeToggled)
{
    QAccessibleInterface& control = accessible("audioSwitch");
    EXPECT_TRUE(control.state().checkable);
    EXPECT_TRUE(control.state().checked);
    perform(control, QAccessibleActionInterface::toggleAction());
    EXPECT_FALSE(model().settings().includeAudio);
    EXPECT_FALSE(control.state().checked);
    perform(control, QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(model().settings().includeAudio);
}

TEST_F(AccessibilityTest, SlidersExposeTheirTimesAndCanBeAdjusted)
{
    enter(WindowModel::Ready);
    model().updateTrimStart(5);
    model().updateTrimEnd(15);
    model().seekPreview(10);
    struct Row {
        const char* name;
        double value;
        const char* time;
    };
    for (const Row& row : {Row{"trimStartHandle", 5, "0:05"}, Row{"trimEndHandle", 15, "0:15"},
                           Row{"videoPosition", 10, "0:10"}}) {
        QAccessibleInterface& slider = accessible(row.name);
        ASSERT_NE(slider.valueInterface(), nullptr);
        EXPECT_EQ(slider.valueInterface()->currentValue().toDouble(), row.value) << row.name;
        EXPECT_EQ(slider.valueInterface()->minimumValue().toDouble(), 0) << row.name;
        EXPECT_EQ(slider.valueInterface()->maximumValue().toDouble(), 20) << row.name;
        EXPECT_EQ(slider.text(QAccessible::Description), QString::fromLatin1(row.time)) << row.name;
    }
    perform(accessible("trimStartHandle"), QAccessibleActionInterface::increaseAction());
    EXPECT_DOUBLE_EQ(model().trimStart(), 5.25);
    perform(accessible("trimEndHandle"), QAccessibleActionInterface::decreaseAction());
    EXPECT_DOUBLE_EQ(model().trimEnd(), 14.75);
    model().seekPreview(10);
    perform(accessible("videoPosition"), QAccessibleActionInterface::increaseAction());
    EXPECT_DOUBLE_EQ(model().currentTime(), 10.25);
    EXPECT_DOUBLE_EQ(accessible("videoPosition").valueInterface()->currentValue().toDouble(), 10.25);
}

TEST_F(AccessibilityTest, SlidersCanBeSetToATime)
{
    enter(WindowModel::Ready);
    const auto set = [this](const char* name, double time) {
        QAccessibleValueInterface& slider = *accessible(name).valueInterface();
        slider.setCurrentValue(time);
        return slider.currentValue().toDouble();
    };
    EXPECT_EQ(set("trimStartHandle", 4), 4);
    EXPECT_EQ(set("trimEndHandle", 12), 12);
    EXPECT_EQ(set("videoPosition", 7.5), 7.5);
    EXPECT_EQ(model().trimStart(), 4);
    EXPECT_EQ(model().trimEnd(), 12);
    EXPECT_EQ(model().currentTime(), 7.5);
    EXPECT_EQ(set("trimEndHandle", 1), 4.25) << "limited by the other handle";
    EXPECT_EQ(set("trimEndHandle", std::nan("")), 4.25);
    model().updateTrimEnd(15);
    EXPECT_EQ(accessible("trimEndHandle").valueInterface()->currentValue().toDouble(), 15);
}

TEST_F(AccessibilityTest, CropsExposeTheirSelectionAndCanBeSelectedMovedAndResized)
{
    enter(WindowModel::Ready);
    QAccessibleInterface& top = accessible(child("topCrop", "body"));
    QAccessibleInterface& bottom = accessible(child("bottomCrop", "body"));
    EXPECT_TRUE(top.state().checked);
    EXPECT_FALSE(bottom.state().checked);
    perform(bottom, QAccessibleActionInterface::pressAction());
    EXPECT_EQ(model().selectedCrop(), 1);
    EXPECT_TRUE(bottom.state().checked);
    const QRectF before = windowModel().bottomRegion();
    perform(bottom, QAccessibleActionInterface::scrollLeftAction());
    EXPECT_NEAR(windowModel().bottomRegion().x(), before.x() - 10.0 / 1920, 1e-9);
    perform(bottom, QAccessibleActionInterface::decreaseAction());
    EXPECT_NEAR(windowModel().bottomRegion().width(), before.width() - 10.0 / 1920, 1e-9);
}

TEST_F(AccessibilityTest, EachActionOfACropChangesTheRegionAccordingly)
{
    enter(WindowModel::Ready);
    using Actions = QAccessibleActionInterface;
    constexpr double x = 10.0 / 1920;
    constexpr double y = 10.0 / 1080;
    struct Row {
        QString action;
        double byX, byY, byWidth;
    };
    const QRectF start(0.3, 0.2, 0.3, 0.474); // has nearly the aspect ratio of a half
    for (const Row& row :
         {Row{Actions::scrollLeftAction(), -x, 0, 0}, Row{Actions::scrollRightAction(), x, 0, 0},
          Row{Actions::scrollUpAction(), 0, -y, 0}, Row{Actions::scrollDownAction(), 0, y, 0},
          Row{Actions::increaseAction(), 0, 0, x}, Row{Actions::decreaseAction(), 0, 0, -x},
          Row{Actions::toggleAction(), 0, 0, 0}, Row{Actions::pressAction(), 0, 0, 0}}) {
        windowModel().setBottomRegion(start);
        model().setSelectedCrop(0);
        settle();
        perform(accessible(child("bottomCrop", "body")), row.action);
        const QRectF now = windowModel().bottomRegion();
        EXPECT_NEAR(now.x() - start.x(), row.byX, 1e-9) << row.action.toStdString();
        EXPECT_NEAR(now.y() - start.y(), row.byY, 1e-9) << row.action.toStdString();
        EXPECT_NEAR(now.width() - start.width(), row.byWidth, 1e-9) << row.action.toStdString();
        EXPECT_EQ(model().selectedCrop(), 1) << row.action.toStdString();
    }
}

TEST_F(AccessibilityTest, AnAspectRatioIsChosenFromThePicker)
{
    const auto description = [this] { return accessible("aspectPicker").text(QAccessible::Description); };
    EXPECT_EQ(description(), QStringLiteral("9:16"));
    perform(accessible("aspectPicker"), QAccessibleActionInterface::pressAction());
    settle();
    QAccessibleInterface& row = accessible("pickerRow1");
    EXPECT_EQ(row.text(QAccessible::Name), QStringLiteral("4:5"));
    perform(row, QAccessibleActionInterface::pressAction());
    EXPECT_EQ(model().settings().aspect, OutputAspect::feed);
    EXPECT_EQ(description(), QStringLiteral("4:5"));
}

TEST_F(AccessibilityTest, MenusAreOpenedAndTheirItemsTriggered)
{
    EXPECT_TRUE(shows(QAccessible::MenuItem, u"File"));
    perform(menuTitle("File"), QAccessibleActionInterface::pressAction());
    settle();
    EXPECT_TRUE(shows(QAccessible::MenuItem, u"Choose Video\u2026"));
    EXPECT_EQ(accessible("chooseVideoItem").text(QAccessible::Description), QStringLiteral("Ctrl+O"));
    perform(accessible("chooseVideoItem"), QAccessibleActionInterface::pressAction());
    settle();
    EXPECT_EQ(fakes().openPanel->timesShown(), 1U);
    EXPECT_FALSE(shows(QAccessible::MenuItem, u"Choose Video\u2026"));
}

TEST_F(AccessibilityTest, ADisabledMenuItemIsDescribedAsUnavailableAndIgnoresThePressAction)
{
    perform(menuTitle("Playback"), QAccessibleActionInterface::pressAction());
    settle();
    QAccessibleInterface& command = accessible("togglePreviewItem");
    EXPECT_EQ(command.text(QAccessible::Description), QStringLiteral("Not available now"));
    perform(command, QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(model().previewPlaying());
    enter(WindowModel::Ready);
    EXPECT_EQ(command.text(QAccessible::Description), QStringLiteral("Space"));
    perform(command, QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(model().previewPlaying());
}

TEST_F(AccessibilityTest, TheAboutDialogIsExposedWhileItIsOpen)
{
    const auto showsDialog = [this] {
        const auto nodes = visibleNodes();
        // Look for the role only: the dialog has no name here, because the offscreen platform never reports
        // an active screen reader.
        return std::any_of(nodes.begin(), nodes.end(),
                           [](const Node& node) { return node.role == QAccessible::Dialog; });
    };
    EXPECT_FALSE(showsDialog());
    perform(accessible("aboutItem"), QAccessibleActionInterface::pressAction());
    settle();
    EXPECT_TRUE(showsDialog());
    EXPECT_TRUE(
        shows(QAccessible::StaticText, QStringLiteral("Version ") + QString::fromLatin1(buildVersion())));
    perform(accessible("closeAbout"), QAccessibleActionInterface::pressAction());
    settle();
    EXPECT_FALSE(showsDialog());
}

TEST_F(AccessibilityTest, TheAccessibleNameOfTheStatusFollowsItsText)
{
    const auto name = [this] { return accessible("status").text(QAccessible::Name); };
    EXPECT_EQ(name(), QStringLiteral("Choose a horizontal video to begin."));
    enter(WindowModel::Exporting);
    EXPECT_EQ(name(), QStringLiteral("Rendering from the original video."));
    fakes().exports.back().task().complete("/clips/Beach day-vertical.mp4");
    settle();
    EXPECT_EQ(name(), QStringLiteral("Saved Beach day-vertical.mp4"));
}

TEST_F(AccessibilityTest, TheAccessibleNameOfAnElidedStatusIsComplete)
{
    const std::string name = std::string(200, 'w') + ".mov";
    window().load(WindowWithFakes::clip(), "/clips/" + name);
    EXPECT_EQ(accessible("status").text(QAccessible::Name), QString::fromStdString(name));
}

} // namespace

} // namespace stackreel
