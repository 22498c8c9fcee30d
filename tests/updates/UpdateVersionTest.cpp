#include "updates/UpdateVersion.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

std::optional<UpdateVersion> version(std::string_view text)
{
    return UpdateVersion::parse(text);
}

} // namespace

TEST(UpdateVersion, ParsesOneToFourNumbers)
{
    EXPECT_EQ(version("1"), (UpdateVersion{{1, 0, 0, 0}}));
    EXPECT_EQ(version("0.1.0"), (UpdateVersion{{0, 1, 0, 0}}));
    EXPECT_EQ(version("12.345.6.999999999"), (UpdateVersion{{12, 345, 6, 999'999'999}}));
}

TEST(UpdateVersion, RejectsAnyOtherText)
{
    using namespace std::string_view_literals;
    for (const auto text : {""sv,
                            "."sv,
                            "1."sv,
                            ".1"sv,
                            "1..2"sv,
                            "1.2.3.4.5"sv,
                            "01.2"sv,
                            "1.00"sv,
                            "1.2-beta"sv,
                            "v1.2"sv,
                            " 1.2"sv,
                            "1.2 "sv,
                            "+1"sv,
                            "-1"sv,
                            "1,2"sv,
                            "1.1000000000"sv,
                            "99999999999999999999"sv,
                            "1e3"sv,
                            "0x1"sv,
                            "1.2\0"sv,
                            "1\n"sv,
                            "١.٢"sv})
        EXPECT_FALSE(version(text)) << text;
}

TEST(UpdateVersion, ComparesNumbersFromTheLeft)
{
    const std::string_view rising[] = {"0",      "0.0.0.1", "0.1", "0.2", "0.10",
                                       "0.10.1", "1.0",     "2",   "10",  "10.0.0.1"};
    for (std::size_t first = 0; first < std::size(rising); ++first)
        for (std::size_t second = 0; second < std::size(rising); ++second)
            EXPECT_EQ(*version(rising[first]) < *version(rising[second]), first < second);
    EXPECT_EQ(version("1.2"), version("1.2.0.0"));
}

} // namespace stackreel
