#include "colour/ColourTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

namespace stackreel
{

namespace
{

Rgb converted(const std::string& name, const Rgb& signal)
{
    const auto& tables = colourTables();
    const auto found = std::ranges::find(tables, name, &ColourTable::name);
    return found == tables.end() ? Rgb{-1, -1, -1} : found->convert(signal);
}

void expectGrey(const Rgb& colour, double expected, double tolerance)
{
    for (const double component : colour)
        EXPECT_NEAR(component, expected, tolerance);
}

} // namespace

// ITU-R BT.2408, table 1: the signals of a grey card and of the reference white in PQ and HLG, in percent.
TEST(ColourTable, HdrReferenceLevelsKeepTheirLight)
{
    const double card = std::pow(26.0 / 203, 1 / 2.4);
    expectGrey(converted("pq", {0.38, 0.38, 0.38}), card, 0.01);
    expectGrey(converted("hlg", {0.38, 0.38, 0.38}), card, 0.01);
    const double white = std::pow(toneMapped({1, 1, 1})[0], 1 / 2.4);
    EXPECT_NEAR(white, 0.916, 0.001);
    expectGrey(converted("pq", {0.58, 0.58, 0.58}), white, 0.005);
    expectGrey(converted("hlg", {0.75, 0.75, 0.75}), white, 0.005);
}

// The signal is below the knee of the curve and inside BT.709.
TEST(ColourTable, HighDynamicRangeOfOtherPrimariesIsConvertedFromThose)
{
    const Rgb signal{0.3, 0.35, 0.3};
    const auto light = [](double value) { return std::pow(value, 2.4); };
    const Rgb bt709 = converted("pq-bt709", signal);
    const Rgb p3 = converted("pq-p3", signal);
    EXPECT_NEAR(light(p3[0]), 1.224940 * light(bt709[0]) - 0.224940 * light(bt709[1]), 1e-6);
    EXPECT_NEAR(light(p3[1]), -0.042057 * light(bt709[0]) + 1.042057 * light(bt709[1]), 1e-6);
    EXPECT_NE(converted("hlg-p3", signal), converted("hlg", signal));
    EXPECT_NE(converted("hlg-p3", signal), converted("hlg-bt709", signal));
    for (const char* name : {"pq", "pq-p3", "pq-bt709"})
        expectGrey(converted(name, {0.38, 0.38, 0.38}), std::pow(26.0 / 203, 1 / 2.4), 0.01);
    for (const char* name : {"hlg", "hlg-p3", "hlg-bt709"})
        expectGrey(converted(name, {1, 1, 1}), 1, 0.001);
}

TEST(ColourTable, TheNominalPeakIsWhiteAndBlackIsBlack)
{
    expectGrey(converted("pq", {0.7518, 0.7518, 0.7518}), 1, 0.001);
    expectGrey(converted("pq", {1, 1, 1}), 1, 0);
    expectGrey(converted("hlg", {1, 1, 1}), 1, 0.001);
    for (const ColourTable& table : colourTables())
        expectGrey(table.convert({0, 0, 0}), 0, 0);
}

TEST(ColourTable, TheKneeIsSmoothAndRises)
{
    double before = 0;
    double slope = 1;
    for (int step = 1; step <= 490; ++step) {
        const double light = step / 100.0;
        const double mapped = toneMapped({light, light / 2, 0})[0];
        EXPECT_GT(mapped, before);
        EXPECT_LE((mapped - before) * 100, slope + 1e-9) << light;
        EXPECT_GT((mapped - before) * 100, slope - 0.05) << "a corner at " << light;
        slope = (mapped - before) * 100;
        before = mapped;
    }
    EXPECT_LE(before, 1);
    const Rgb hue = toneMapped({3, 1.5, 0.3});
    EXPECT_NEAR(hue[1] / hue[0], 0.5, 1e-12);
    EXPECT_NEAR(hue[2] / hue[0], 0.1, 1e-12);
}

TEST(ColourTable, WhiteStaysWhiteInStandardDynamicRange)
{
    for (const char* name : {"gamma22", "gamma28", "smpte170m", "bt2020", "p3"})
        expectGrey(converted(name, {1, 1, 1}), 1, 1e-5);
    for (const char* name : {"smpte170m", "bt2020", "p3"})
        expectGrey(converted(name, {0.4, 0.4, 0.4}), 0.4, 1e-5);
    expectGrey(converted("gamma28", {0.5, 0.5, 0.5}), std::pow(0.5, 2.8 / 2.4), 1e-12);
}

TEST(ColourTable, FilesListRedFirst)
{
    const ColourTable same{"same", [](const Rgb& signal) { return signal; }};
    std::istringstream file(cubeFile(same, 3));
    std::string key;
    int size = 0;
    file >> key >> size;
    EXPECT_EQ(key, "LUT_3D_SIZE");
    EXPECT_EQ(size, 3);
    for (int index = 0; index < 27; ++index) {
        Rgb row{};
        file >> row[0] >> row[1] >> row[2];
        EXPECT_EQ(row, (Rgb{index % 3 / 2.0, index / 3 % 3 / 2.0, index / 9 / 2.0})) << index;
    }
    EXPECT_TRUE(file.good());
    EXPECT_EQ(file.get(), '\n');
    EXPECT_EQ(file.get(), std::istringstream::traits_type::eof());
}

} // namespace stackreel
