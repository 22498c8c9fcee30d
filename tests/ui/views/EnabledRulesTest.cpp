#include "tests/ui/views/ViewsTest.h"

#include <ostream>
#include <stdexcept>

namespace stackreel
{

namespace
{

struct Row {
    WindowModel::Phase phase;
    bool headerButton;
    bool timeline;
    bool swap;
    bool exportButton;
    bool progressBar;
    bool video;
    bool preparing;
    bool empty;
};

/// GoogleTest prints the phase as the name of the parameter.
void PrintTo(const Row& row, std::ostream* out)
{
    *out << row.phase;
}

class EnabledRulesTest : public ViewsTest, public testing::WithParamInterface<Row>
{
};

TEST_P(EnabledRulesTest, EachPhaseShowsAndEnablesItsControls)
{
    const Row& row = GetParam();
    enter(row.phase);
    EXPECT_EQ(item("chooseButton").isVisible(), row.headerButton);
    EXPECT_EQ(item("timeline").isVisible(), row.timeline);
    EXPECT_TRUE(item("swapButton").isVisible());
    EXPECT_EQ(item("swapButton").isEnabled(), row.swap);
    EXPECT_TRUE(item("exportButton").isVisible());
    EXPECT_EQ(item("exportButton").isEnabled(), row.exportButton);
    EXPECT_EQ(item("exportProgress").isVisible(), row.progressBar);
}

TEST_P(EnabledRulesTest, EachPhaseShowsItsStateOfTheCanvas)
{
    const Row& row = GetParam();
    enter(row.phase);
    EXPECT_EQ(item("videoCanvas").isVisible(), row.video);
    EXPECT_EQ(item("preparingState").isVisible(), row.preparing);
    EXPECT_EQ(item("emptyState").isVisible(), row.empty);
    EXPECT_EQ(item("sourceSection").isVisible(), row.video);
}

TEST_P(EnabledRulesTest, OtherControlsAreEnabledInEveryPhase)
{
    windowModel().setAspectIndex(3);
    enter(GetParam().phase);
    for (const char* name : {"aspectPicker", "audioSwitch", "widthField", "heightField"}) {
        EXPECT_TRUE(item(name).isVisible()) << name;
        EXPECT_TRUE(item(name).isEnabled()) << name;
    }
    for (const char* name : {"playButton", "muteButton"}) {
        EXPECT_EQ(item(name).isVisible(), GetParam().video) << name;
        EXPECT_TRUE(item(name).isEnabled()) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(
    AllPhases, EnabledRulesTest,
    testing::Values(Row{WindowModel::Empty, false, false, false, false, false, false, false, true},
                    Row{WindowModel::Preparing, true, false, false, false, false, false, true, false},
                    Row{WindowModel::Ready, true, true, true, true, false, true, false, false},
                    Row{WindowModel::Exporting, true, false, false, true, true, true, false, false},
                    Row{WindowModel::Complete, true, true, true, true, false, true, false, false},
                    Row{WindowModel::Failed, true, false, false, false, false, false, false, true}));

using PhasesTest = ViewsTest;

TEST_F(PhasesTest, KeepsTheVideoAfterAFailedExport)
{
    enter(WindowModel::Exporting);
    fakes().exports.back().task().fail(std::runtime_error("no room"));
    settle();
    EXPECT_EQ(windowModel().phase(), WindowModel::Failed);
    EXPECT_TRUE(item("videoCanvas").isVisible());
    EXPECT_FALSE(item("timeline").isVisible());
    EXPECT_FALSE(item("exportButton").isEnabled());
    EXPECT_TRUE(item("chooseButton").isVisible());
}

TEST_F(PhasesTest, ShowsThePreparingStateWhenAnotherClipIsLoaded)
{
    enter(WindowModel::Ready);
    model().chooseSource();
    fakes().openPanel->choose("/clips/another.mov");
    settle();
    EXPECT_FALSE(item("videoCanvas").isVisible());
    EXPECT_TRUE(item("preparingState").isVisible());
    EXPECT_FALSE(item("sourceSection").isVisible());
}

} // namespace

} // namespace stackreel
