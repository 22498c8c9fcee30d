#include "tests/model/ModelTest.h"

namespace stackreel
{

namespace
{

class CropSetupTest : public ModelTest
{
protected:
    CropSetupTest()
    {
        load(20);
        model().setTopRegion(top);
        model().setBottomRegion(bottom);
        takeJournal();
    }
    /// The names of the properties that changed since the last call.
    Lines announcedProperties()
    {
        Lines names;
        for (const std::string& line : takeJournal())
            names.push_back(line.substr(0, line.find(' ')));
        return names;
    }

    static constexpr double sourceAspect = 16.0 / 9;
    const CropRegion top = {.x = 0.1, .y = 0.2, .width = 0.3, .height = 0.4};
    const CropRegion bottom = {.x = 0.5, .y = 0.1, .width = 0.4, .height = 0.7};
};

using AdaptingRegions = CropSetupTest;
using SwappingCrops = CropSetupTest;

struct OutputCase {
    ExportSettings settings;
    double panelAspect;
};

const OutputCase outputs[] = {
    {{.aspect = OutputAspect::portrait}, 1.125},
    {{.aspect = OutputAspect::feed}, 1.6},
    {{.aspect = OutputAspect::square}, 2},
    {{.aspect = OutputAspect::custom, .customWidth = 1000, .customHeight = 500}, 4},
    {{.aspect = OutputAspect::custom, .customWidth = 101, .customHeight = 1}, 100},
};

} // namespace

TEST_F(AdaptingRegions, FitsBothToTheHalvesOfTheOutput)
{
    for (const OutputCase& output : outputs) {
        model().setTopRegion(top);
        model().setBottomRegion(bottom);
        model().setSettings(output.settings);
        takeJournal();
        model().adaptRegionsToCurrentOutput();
        EXPECT_EQ(model().topRegion(), top.adaptingAspect(sourceAspect, output.panelAspect));
        EXPECT_EQ(model().bottomRegion(), bottom.adaptingAspect(sourceAspect, output.panelAspect));
        EXPECT_EQ(announcedProperties(), (Lines{"topRegion", "bottomRegion"}));
    }
}

TEST_F(AdaptingRegions, UsesTheDisplayedSize)
{
    // Coded as 1080 × 1920, displayed as 1920 × 1080.
    MediaInfo rotated = clip(20);
    rotated.width = 1080;
    rotated.height = 1920;
    rotated.rotation = -90;
    model().setMediaInfo(rotated);
    model().adaptRegionsToCurrentOutput();
    EXPECT_EQ(model().topRegion(), top.adaptingAspect(sourceAspect, 1.125));
}

TEST_F(AdaptingRegions, ReadsTheSettingsAgainForTheBottom)
{
    const auto connection = QObject::connect(&model(), &AppModel::topRegionChanged, &model(), [this] {
        model().setSettings({.aspect = OutputAspect::square});
    });
    model().adaptRegionsToCurrentOutput();
    QObject::disconnect(connection);
    EXPECT_EQ(model().topRegion(), top.adaptingAspect(sourceAspect, 1.125));
    EXPECT_EQ(model().bottomRegion(), bottom.adaptingAspect(sourceAspect, 2));
}

TEST_F(AdaptingRegions, DoesNothingWithoutASource)
{
    model().setMediaInfo(std::nullopt);
    takeJournal();
    model().adaptRegionsToCurrentOutput();
    model().setSettings({.aspect = OutputAspect::custom});
    model().customDimensionsChanged();
    EXPECT_EQ(announcedProperties(), Lines{"settings"});
    EXPECT_EQ(model().topRegion(), top);
}

TEST_F(AdaptingRegions, FollowsTheCustomFieldsOnlyForACustomOutput)
{
    for (const OutputCase& output : outputs) {
        model().setTopRegion(top);
        model().setBottomRegion(bottom);
        model().setSettings(output.settings);
        takeJournal();
        model().customDimensionsChanged();
        const bool adapts = output.settings.aspect == OutputAspect::custom;
        EXPECT_EQ(announcedProperties(), adapts ? (Lines{"topRegion", "bottomRegion"}) : Lines());
        EXPECT_EQ(model().topRegion(), adapts ? top.adaptingAspect(sourceAspect, output.panelAspect) : top);
    }
}

TEST_F(SwappingCrops, ExchangesTheRegionsAndKeepsTheSameOneSelected)
{
    model().swapCrops();
    EXPECT_EQ(model().topRegion(), bottom);
    EXPECT_EQ(model().bottomRegion(), top);
    EXPECT_EQ(model().selectedCrop(), 1);
    EXPECT_EQ(announcedProperties(), (Lines{"topRegion", "bottomRegion", "selectedCrop"}));
}

TEST_F(SwappingCrops, TwiceRestoresEverything)
{
    for (const int selected : {0, 1}) {
        model().setSelectedCrop(selected);
        model().swapCrops();
        model().swapCrops();
        EXPECT_EQ(model().topRegion(), top);
        EXPECT_EQ(model().bottomRegion(), bottom);
        EXPECT_EQ(model().selectedCrop(), selected);
    }
}

TEST_F(SwappingCrops, SelectsTheTopFromAnySelectionButTheTop)
{
    for (const int selected : {1, 2, -1}) {
        model().setSelectedCrop(selected);
        model().swapCrops();
        EXPECT_EQ(model().selectedCrop(), 0);
    }
}

} // namespace stackreel
