#include "ui/WindowModel.h"

#include "tests/support/fakes/FakeServices.h"

#include <QCoreApplication>
#include <QLocale>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

class WindowModelTest : public testing::Test
{
protected:
    WindowModelTest() : m_model(m_fakes.services()), m_window(m_model) {}
    void SetUp() override { QLocale::setDefault(QLocale::c()); }
    void TearDown() override { QLocale::setDefault(QLocale::c()); }

    void load(const MediaInfo& media)
    {
        m_model.chooseSource();
        m_fakes.openPanel->choose("/clips/Strand & Möwe.mov");
        settle();
        m_fakes.inspections.back().task().complete(media);
        m_fakes.previews.back().task().complete("/clips/Strand & Möwe.mov");
        settle();
    }

    static void settle()
    {
        for (int round = 0; round < 3; ++round)
            QCoreApplication::sendPostedEvents();
    }

    static MediaInfo turnedClip()
    {
        return {.width = 1080,
                .height = 1920,
                .rotation = -90,
                .duration = 61.4,
                .videoCodec = "hevc",
                .audioCodec = {}};
    }

    FakeServices m_fakes;
    AppModel m_model;
    WindowModel m_window;
};

TEST_F(WindowModelTest, IsEmptyWithoutAClip)
{
    EXPECT_EQ(m_window.phase(), WindowModel::Empty);
    EXPECT_FALSE(m_window.hasMedia());
    EXPECT_FALSE(m_window.hasPlayer());
    EXPECT_FALSE(m_window.editable());
    EXPECT_EQ(m_window.displayAspect(), 0);
    EXPECT_EQ(m_window.duration(), 0);
    EXPECT_TRUE(m_window.displayedSize().isEmpty());
    EXPECT_TRUE(m_window.frameFact().isEmpty());
    EXPECT_TRUE(m_window.videoFact().isEmpty());
    EXPECT_TRUE(m_window.lengthFact().isEmpty());
}

TEST_F(WindowModelTest, ReportsTheDisplayedSizeOfARotatedClip)
{
    load(turnedClip());
    EXPECT_EQ(m_window.phase(), WindowModel::Ready);
    EXPECT_EQ(m_window.frameFact(), QStringLiteral("1920 \u00d7 1080"));
    EXPECT_EQ(m_window.videoFact(), QStringLiteral("HEVC"));
    EXPECT_EQ(m_window.lengthFact(), QStringLiteral("1:01"));
    EXPECT_EQ(m_window.displayedSize(), QSizeF(1920, 1080));
    EXPECT_DOUBLE_EQ(m_window.displayAspect(), 16.0 / 9);
    EXPECT_EQ(m_window.phaseMessage(), QString::fromUtf8("Strand & Möwe.mov"));
}

TEST_F(WindowModelTest, FormatsTimesForTheTimeline)
{
    load(turnedClip());
    m_model.updateTrimStart(5);
    m_model.updateTrimEnd(61);
    EXPECT_EQ(m_window.rangeText(), QStringLiteral("0:05 to 1:01"));
    EXPECT_EQ(m_window.selectedText(), QStringLiteral("0:56 selected"));
    EXPECT_EQ(WindowModel::timeText(3725), QStringLiteral("1:02:05"));
}

TEST_F(WindowModelTest, AReversedRangeHasALengthOfZero)
{
    m_model.setTrimStart(5);
    m_model.setTrimEnd(2);
    EXPECT_EQ(m_window.selectedText(), QStringLiteral("0:00 selected"));
}

TEST_F(WindowModelTest, StoresAnAspectRatioBeforeAdaptingTheCrops)
{
    load(turnedClip());
    std::vector<int> aspectsAtRefit;
    QObject::connect(&m_model, &AppModel::topRegionChanged,
                     [&] { aspectsAtRefit.push_back(m_window.aspectIndex()); });
    m_window.setAspectIndex(3);
    EXPECT_EQ(aspectsAtRefit, std::vector<int>{3});
    EXPECT_TRUE(m_window.customSize());
    m_window.setAspectIndex(4);
    m_window.setAspectIndex(-1);
    EXPECT_EQ(m_window.aspectIndex(), 3);
}

TEST_F(WindowModelTest, ParsesAndFormatsASizeInTheUsersLocale)
{
    QLocale::setDefault(QLocale(QLocale::German));
    m_window.setCustomWidth(QStringLiteral("1.600"));
    EXPECT_EQ(m_model.settings().customWidth, 1600);
    EXPECT_EQ(m_window.customWidth(), QStringLiteral("1.600"));
    m_window.setCustomWidth(QStringLiteral("1,5"));
    EXPECT_EQ(m_model.settings().customWidth, 1600) << "no integer";
    m_window.setCustomHeight(QStringLiteral(" 900 "));
    EXPECT_EQ(m_model.settings().customHeight, 900);
}

TEST_F(WindowModelTest, AdaptsTheCropsOnlyWhenAUsedSizeChanges)
{
    load(turnedClip());
    QSignalSpy adaptations(&m_model, &AppModel::topRegionChanged);
    m_window.setCustomWidth(QStringLiteral("1200"));
    EXPECT_EQ(adaptations.count(), 0) << "a preset is chosen";
    m_window.setAspectIndex(3);
    adaptations.clear();
    m_window.setCustomWidth(QStringLiteral("1200"));
    EXPECT_EQ(adaptations.count(), 0);
    m_window.setCustomWidth(QStringLiteral("1300"));
    EXPECT_EQ(adaptations.count(), 1);
}

TEST_F(WindowModelTest, ConvertsRegionsInBothDirections)
{
    const QRectF region(0.1, 0.2, 0.3, 0.4);
    m_window.setBottomRegion(region);
    EXPECT_EQ(m_model.bottomRegion(), (CropRegion{.x = 0.1, .y = 0.2, .width = 0.3, .height = 0.4}));
    EXPECT_EQ(m_window.bottomRegion(), region);
}

TEST_F(WindowModelTest, FitsAPictureIntoAnArea)
{
    EXPECT_EQ(m_window.fittedFrame(400, 100, 2), QRectF(100, 0, 200, 100));
    EXPECT_EQ(m_window.fittedFrame(200, 300, 2), QRectF(0, 100, 200, 100));
    EXPECT_EQ(m_window.fittedFrame(200, 300, 0), QRectF());
}

} // namespace

} // namespace stackreel
