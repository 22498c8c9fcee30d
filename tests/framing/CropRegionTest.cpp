#include "framing/CropRegion.h"

#include "framing/ExportSettings.h"
#include "tests/framing/Generators.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

constexpr double wide = 16.0 / 9.0;

} // namespace

TEST(InitialPair, MatchesATableOfExactValues)
{
    struct Row {
        const char* name;
        double sourceAspect;
        double panelAspect;
        CropRegion top;
        double bottomX;
    };
    const Row rows[] = {
        {"16:9, portrait",
         wide,
         1.125,
         {0.04, 0x1.1eb851eb851ecp-3, 0x1.d28f5c28f5c29p-2, 0.72},
         0x1.023d70a3d70a4p-1},
        {"16:9, feed",
         wide,
         1.6,
         {0.04, 0x1.27d27d27d27d4p-3, 0.64, 0x1.6c16c16c16c16p-1},
         0x1.47ae147ae147ap-2},
        {"16:9, square",
         wide,
         2.0,
         {0.04, 0x1.b97530eca8642p-3, 0.64, 0x1.23456789abcdfp-1},
         0x1.47ae147ae147ap-2},
        {"4:3, portrait",
         4.0 / 3.0,
         1.125,
         {0.04, 0x1.1eb851eb851eep-3, 0x1.370a3d70a3d7p-1, 0x1.70a3d70a3d709p-1},
         0x1.68f5c28f5c29p-2},
        {"2.39:1, square",
         2.39,
         2.0,
         {0.04, 0x1.1eb851eb851ecp-3, 0x1.347c40448d639p-1, 0.72},
         0x1.6e11bce7890fep-2},
        {"1.01:1, square",
         1.01,
         2.0,
         {0.04, 0x1.5a858793dd98p-2, 0.64, 0x1.4af4f0d844d01p-2},
         0x1.47ae147ae147ap-2},
        {"8:1, portrait",
         8.0,
         1.125,
         {0.04, 0x1.1eb851eb851ecp-3, 0x1.9eb851eb851ebp-4, 0.72},
         0x1.b7ae147ae147bp-1},
        {"100:1, clamped width", 100.0, 1.125, {0.04, 0x1.1eb851eb851ecp-3, 0.06, 0.72}, 0.94},
        {"a very wide half, clamped height",
         wide,
         1000.0,
         {0.04, 0x1.ff6ade834f043p-2, 0.64, 0.06},
         0x1.47ae147ae147ap-2},
    };
    for (const Row& row : rows) {
        const auto [top, bottom] = CropRegion::initialPair(row.sourceAspect, row.panelAspect);
        EXPECT_EQ(top, row.top) << row.name;
        CropRegion expected = row.top;
        expected.x = row.bottomX;
        EXPECT_EQ(bottom, expected) << row.name;
    }
}

TEST(InitialPair, MatchesTheRoundedExamples)
{
    const auto [portraitTop, portraitBottom] = CropRegion::initialPair(wide, panelAspect({1080, 1920}));
    EXPECT_NEAR(portraitTop.width, 0.4556, 5e-5);
    EXPECT_EQ(portraitTop.height, 0.72);
    EXPECT_EQ(portraitTop.x, 0.04);
    EXPECT_NEAR(portraitTop.y, 0.14, 1e-15);
    EXPECT_NEAR(portraitBottom.x, 0.5044, 5e-5);
    EXPECT_NEAR(CropRegion::initialPair(wide, panelAspect({1080, 1350})).first.height, 0.7111, 5e-5);
    EXPECT_NEAR(CropRegion::initialPair(wide, panelAspect({1080, 1080})).first.height, 0.5689, 5e-5);
}

TEST(AdaptingAspect, KeepsTheCentreAndTheWidthWhenTheyFit)
{
    struct Row {
        const char* name;
        CropRegion region;
        double sourceAspect;
        double panelAspect;
        CropRegion expected;
    };
    const Row rows[] = {
        {"the full frame, both sides above the limit",
         {0, 0, 1, 1},
         1.0,
         1.125,
         {0x1.eb851eb851ecp-6, 0x1.50c83fb72ea64p-4, 0.94, 0x1.abcdf01234567p-1}},
        {"the same by 16:9 and square",
         {0, 0, 1, 1},
         wide,
         2.0,
         {0x1.eb851eb851ecp-6, 0x1.50c83fb72ea64p-4, 0.94, 0x1.abcdf01234567p-1}},
        {"a width that stays",
         {0.04, 0.14, 0.44, 0.72},
         wide,
         1.125,
         {0x1.47ae147ae147cp-5, 0x1.380102e85c08ap-3, 0.44, 0x1.63ff7e8bd1fbbp-1}},
        {"a height that shrinks",
         {0.5, 0.1, 0.1, 0.8},
         wide,
         1.6,
         {0.5, 0x1.c71c71c71c71cp-2, 0.1, 0x1.c71c71c71c71cp-4}},
        {"a height above the limit takes the width along",
         {0, 0.3, 0.9, 0.3},
         wide,
         0.5,
         {0x1.4570a3d70a3d8p-2, 0, 0x1.0eb851eb851ebp-2, 0.94}},
        {"a height just above the limit",
         {0.25, 0.1, 0.5, 0.8},
         1.5,
         0.79365,
         {0x1.015ad106ee30dp-2, 0x1.eb851eb851ec0p-6, 0x1.fd4a5df2239e6p-2, 0x1.e147ae147ae14p-1}},
        {"a height just below the limit",
         {0.25, 0.1, 0.5, 0.8},
         1.5,
         0.8,
         {0x1.0000000000000p-2, 0x1.0000000000000p-5, 0x1.0000000000000p-1, 0x1.e000000000000p-1}},
        {"a width just above the limit",
         {0.02, 0.1, 0.945, 0.5},
         1.5,
         1.65,
         {0x1.70a3d70a3d710p-6, 0x0.0p+0, 0x1.e147ae147ae14p-1, 0x1.b586fb586fb59p-1}},
        {"a width just below the limit",
         {0.03, 0.1, 0.935, 0.5},
         1.5,
         1.65,
         {0x1.eb851eb851ec0p-6, 0x0.0p+0, 0x1.deb851eb851ecp-1, 0x1.b333333333335p-1}},
        {"one that would leave the frame", {0, 0, 0.8, 0.8}, 1.2, 1.125, {0, 0, 0.8, 0x1.b4e81b4e81b4fp-1}},
        {"the smallest in the corner", {0, 0, 0.06, 0.06}, wide, 1.125, {0, 0, 0.06, 0x1.845c8a0ce5129p-4}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.region.adaptingAspect(row.sourceAspect, row.panelAspect), row.expected) << row.name;
}

TEST(ClampingToTheFrame, ClampsTheSidesFirstThenThePosition)
{
    struct Row {
        CropRegion region;
        CropRegion expected;
    };
    const Row rows[] = {
        {{0.2, 0.3, 0.4, 0.5}, {0.2, 0.3, 0.4, 0.5}},      {{2, 2, 0.01, 0.01}, {0.94, 0.94, 0.06, 0.06}},
        {{0.97, 0, 0.01, 0.5}, {0.94, 0, 0.06, 0.5}},      {{-1, -1, 0.5, 0.5}, {0, 0, 0.5, 0.5}},
        {{0.5, 0.5, 7, 1.0000000000000002}, {0, 0, 1, 1}}, {{0.5, 0.5, -3, 0}, {0.5, 0.5, 0.06, 0.06}},
        {{-0.0, 0.6, 0.5, 0.5}, {0, 0.5, 0.5, 0.5}},       {{0, 0, 1, 1}, {0, 0, 1, 1}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.region.clampedToFrame(), row.expected) << row.region;
}

} // namespace stackreel
