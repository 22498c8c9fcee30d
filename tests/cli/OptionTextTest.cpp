#include "cli/OptionText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace stackreel
{

namespace
{

TEST(OptionText, SecondsAreFiniteDecimalsNotBelowZero)
{
    const std::vector<std::pair<std::string, std::optional<double>>> rows = {
        {"0", 0.0},
        {"12.5", 12.5},
        {".5", 0.5},
        {"5.", 5.0},
        {"+3", 3.0},
        {"1e2", 100.0},
        {"-0", 0.0},
        {"0.0001", 0.0001},
        {"", std::nullopt},
        {" 1", std::nullopt},
        {"1 ", std::nullopt},
        {"1s", std::nullopt},
        {"-1", std::nullopt},
        {"1,5", std::nullopt},
        {"0x10", std::nullopt},
        {"nan", std::nullopt},
        {"inf", std::nullopt},
        {"1e999", std::nullopt},
        {"--1", std::nullopt},
        {"+-1", std::nullopt},
        {"1:30", std::nullopt},
        {".", std::nullopt},
        {"1e", std::nullopt},
        {"１", std::nullopt},
        {"1e9", 1e9},
        {"1e300", std::nullopt},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(OptionText::seconds(text), expected) << text;
    EXPECT_FALSE(std::signbit(OptionText::seconds("-0").value()));
}

TEST(OptionText, SizeIsTwoSidesFrom2To16384)
{
    EXPECT_EQ(OptionText::size("1080x1920"), (PixelSize{.width = 1080, .height = 1920}));
    EXPECT_EQ(OptionText::size("2x16384"), (PixelSize{.width = 2, .height = 16384}));
    EXPECT_EQ(OptionText::size("721x3"), (PixelSize{.width = 721, .height = 3}));
    for (const char* text :
         {"",        "x",       "1080",  "1080x", "x1920", "1080X1920", "1080*1920",
          "1x2",     "2x1",     "0x0",   "-2x2",  "2x-2",  "+2x2",      "2x+2",
          "16385x2", "2x16385", "2x2x2", " 2x2",  "2x2 ",  "2.0x2",     "99999999999999999999x2",
          "0x10x2"})
        EXPECT_FALSE(OptionText::size(text)) << text;
}

TEST(OptionText, RegionIsFourFiniteNumbersClampedToTheFrame)
{
    EXPECT_EQ(OptionText::region("0.04,0.14,0.44,0.72"),
              (CropRegion{.x = 0.04, .y = 0.14, .width = 0.44, .height = 0.72}));
    EXPECT_EQ(OptionText::region("0,0,1,1"), (CropRegion{.x = 0, .y = 0, .width = 1, .height = 1}));
    EXPECT_EQ(OptionText::region("1e300,-1e300,1e300,0"),
              (CropRegion{.x = 0, .y = 0, .width = 1, .height = 0.06}));
    EXPECT_EQ(OptionText::region("9,9,0.5,0.5"),
              (CropRegion{.x = 0.5, .y = 0.5, .width = 0.5, .height = 0.5}));
    for (const char* text :
         {"", ",", ",,,", "0,0,1", "0,0,1,", ",0,0,1", "0,0,1,1,", "0,0,1,1,1", "0, 0,1,1", "0;0;1;1",
          "a,0,1,1", "0,0,nan,1", "0,0,inf,1", "0,0,1e999,1", "0 0 1 1", "10%,0,1,1"})
        EXPECT_FALSE(OptionText::region(text)) << text;
}

} // namespace

} // namespace stackreel
