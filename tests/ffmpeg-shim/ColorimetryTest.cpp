#include "tests/ffmpeg-shim/Colorimetry.h"

#include <gtest/gtest.h>

namespace stackreel::shim
{

// Pairs from the test data of G. Sharma, W. Wu and E. N. Dalal, "The CIEDE2000 Color-Difference Formula",
// Color Research and Application 30 (2005), table 1.
TEST(Colorimetry, DifferencesAreThoseOfThePublishedTestData)
{
    const struct {
        Triple one, other;
        double difference;
    } rows[] = {
        {{50, 2.6772, -79.7751}, {50, 0, -82.7485}, 2.0425},
        {{50, -1.3802, -84.2814}, {50, 0, -82.7485}, 1.0000},
        {{50, 0, 0}, {50, -1, 2}, 2.3669},
        {{50, 2.4900, -0.0010}, {50, -2.4900, 0.0011}, 7.2195},
        {{50, 2.5, 0}, {73, 25, -18}, 27.1492},
        {{60.2574, -34.0099, 36.2677}, {60.4626, -34.1751, 39.4387}, 1.2644},
        {{63.0109, -31.0961, -5.8663}, {62.8187, -29.7946, -4.0864}, 1.2630},
        {{22.7233, 20.0904, -46.6940}, {23.0331, 14.9730, -42.5619}, 2.0373},
        {{2.0776, 0.0795, -1.1350}, {0.9033, -0.0636, -0.5514}, 0.9082},
    };
    for (const auto& row : rows) {
        EXPECT_NEAR(differenceOf(row.one, row.other), row.difference, 5e-5);
        EXPECT_NEAR(differenceOf(row.other, row.one), row.difference, 5e-5);
    }
}

TEST(Colorimetry, WhiteIsTheSameForAllPrimaries)
{
    for (const Primaries& primaries : {bt709Primaries, bt601Primaries525, bt2020Primaries, p3Primaries}) {
        const Triple lab = labOf(xyzOf({1, 1, 1}, primaries));
        EXPECT_NEAR(lab[0], 100, 1e-9);
        EXPECT_NEAR(lab[1], 0, 1e-9);
        EXPECT_NEAR(lab[2], 0, 1e-9);
    }
    // ITU-R BT.709 gives the luminance of its primaries with four decimals.
    EXPECT_NEAR(xyzOf({1, 0, 0}, bt709Primaries)[1], 0.2126, 5e-5);
    EXPECT_NEAR(xyzOf({0, 0, 1}, bt709Primaries)[1], 0.0722, 5e-5);
}

TEST(Colorimetry, CodesAreThoseOfTheStandards)
{
    // White, black, and red of BT.601 bars at 100 % in eight bits.
    EXPECT_EQ(codesOf({1, 1, 1}, bt709Luma, false, 8), (Triple{235, 128, 128}));
    EXPECT_EQ(codesOf({0, 0, 0}, bt709Luma, false, 10), (Triple{64, 512, 512}));
    const Triple red = codesOf({1, 0, 0}, bt601Luma, false, 8);
    EXPECT_NEAR(red[0], 81, 0.5);
    EXPECT_NEAR(red[1], 90, 0.5);
    EXPECT_NEAR(red[2], 240, 0.5);
    const Triple signal = signalOf(codesOf({0.25, 0.5, 0.75}, bt601Luma, false, 8), bt601Luma);
    EXPECT_NEAR(signal[0], 0.25, 1e-12);
    EXPECT_NEAR(signal[1], 0.5, 1e-12);
    EXPECT_NEAR(signal[2], 0.75, 1e-12);
}

} // namespace stackreel::shim
