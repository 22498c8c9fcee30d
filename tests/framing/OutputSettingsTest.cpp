#include "framing/ExportSettings.h"
#include "framing/OutputAspect.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

namespace stackreel
{

namespace
{

ExportSettings custom(std::int64_t width, std::int64_t height)
{
    ExportSettings settings;
    settings.aspect = OutputAspect::custom;
    settings.customWidth = width;
    settings.customHeight = height;
    return settings;
}

} // namespace

TEST(OutputAspect, IsParsedFromExactlyItsText)
{
    using Texts = std::vector<std::string_view>;
    Texts texts;
    for (const OutputAspect aspect : allOutputAspects) {
        texts.push_back(rawValue(aspect));
        EXPECT_EQ(outputAspect(rawValue(aspect)), aspect);
    }
    EXPECT_EQ(texts, (Texts{"9:16", "4:5", "1:1", "Custom"}));
    for (const std::string_view text :
         {"custom", "CUSTOM", "", " 9:16", "9:16 ", "9/16", "16:9", "portrait", "1:1\n", "4 : 5"})
        EXPECT_EQ(outputAspect(text), std::nullopt) << text;
    EXPECT_EQ(outputAspect(std::string_view("1:1\0", 4)), std::nullopt);
}

TEST(OutputSize, FollowsTheAspect)
{
    const auto sizeOf = [](OutputAspect aspect) {
        ExportSettings settings = custom(10, 20);
        settings.aspect = aspect;
        return settings.size();
    };
    EXPECT_EQ(sizeOf(OutputAspect::portrait), (PixelSize{1080, 1920}));
    EXPECT_EQ(sizeOf(OutputAspect::feed), (PixelSize{1080, 1350}));
    EXPECT_EQ(sizeOf(OutputAspect::square), (PixelSize{1080, 1080}));
    EXPECT_EQ(sizeOf(OutputAspect::custom), (PixelSize{10, 20}));
}

TEST(CustomSize, IsEvenAndAtLeastTwo)
{
    struct Row {
        std::int64_t requested;
        std::int64_t size;
    };
    const Row rows[] = {
        {std::numeric_limits<std::int64_t>::min(), 2},
        {-1, 2},
        {0, 2},
        {1, 2},
        {2, 2},
        {3, 2},
        {4, 4},
        {1001, 1000},
        {1080, 1080},
        {1081, 1080},
        {std::numeric_limits<std::int64_t>::max(), 9223372036854775806},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(custom(row.requested, 1920).size(), (PixelSize{row.size, 1920})) << row.requested;
        EXPECT_EQ(custom(1080, row.requested).size(), (PixelSize{1080, row.size})) << row.requested;
    }
}

RC_GTEST_PROP(CustomSize, IsTheLargestEvenOneNotAboveTheRequest, (std::int64_t width, std::int64_t height))
{
    const PixelSize size = custom(width, height).size();
    for (const auto& [requested, given] : {std::pair(width, size.width), std::pair(height, size.height)}) {
        RC_ASSERT(given >= 2 && given % 2 == 0);
        if (requested >= 2)
            RC_ASSERT(given == requested || given + 1 == requested);
    }
}

TEST(PanelAspect, IsWidthToHalfTheHeight)
{
    EXPECT_EQ(panelAspect({1080, 1920}), 1.125);
    EXPECT_EQ(panelAspect({1080, 1350}), 1.6);
    EXPECT_EQ(panelAspect({1080, 1080}), 2.0);
    EXPECT_EQ(panelAspect({2, 2}), 2.0);
    EXPECT_EQ(panelAspect({3, 3}), 2.0) << "half of an odd height is not rounded";
}

TEST(ExportSettings, DefaultToPortraitWithSound)
{
    const ExportSettings settings;
    EXPECT_EQ(settings.aspect, OutputAspect::portrait);
    EXPECT_EQ(settings.customWidth, 1080);
    EXPECT_EQ(settings.customHeight, 1920);
    EXPECT_TRUE(settings.includeAudio);
    EXPECT_EQ(settings, ExportSettings());
    EXPECT_NE(settings, custom(1080, 1920));
}

} // namespace stackreel
