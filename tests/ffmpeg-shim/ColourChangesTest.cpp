#include "ffmpeg-shim/ColourChanges.h"

#include <gtest/gtest.h>

namespace stackreel::shim
{

namespace
{

using Texts = std::vector<std::string>;

/// The changes as "name=value", without the tags, which are always set.
Texts changesFor(const ColourConversion& conversion, TableFilter filter = TableFilter::lut3d)
{
    Texts texts;
    for (const Change& change : colourChanges(conversion, filter))
        texts.push_back(std::string(change.name) + "=" + std::string(change.value));
    EXPECT_EQ(texts.at(0), "colours=bt709");
    texts.erase(texts.begin());
    return texts;
}

} // namespace

TEST(ColourChanges, AreOnlyTheTagsForBt709)
{
    EXPECT_EQ(changesFor({.matrix = "bt709"}), Texts{});
    EXPECT_EQ(changesFor({.isGrey = true}), Texts{});
    EXPECT_EQ(changesFor({.matrix = "bt709", .tables = {}}, TableFilter::none), Texts{});
}

TEST(ColourChanges, NameTheMatrixAlsoWhereATableIsApplied)
{
    for (const char* matrix : {"bt601", "fcc", "smpte240m", "bt2020", "ycgco"})
        EXPECT_EQ(changesFor({.matrix = matrix}), Texts{"matrix=bt709"}) << matrix;
    EXPECT_EQ(changesFor({.isRgb = true}), Texts{"matrix=bt709"});
    EXPECT_EQ(changesFor({.matrix = "smpte240m", .tables = {"smpte170m"}}),
              (Texts{"matrix=bt709", "primaries=bt709"}));
    EXPECT_EQ(changesFor({.matrix = "bt601", .fullRange = true}), (Texts{"matrix=bt709", "range=limited"}));
    EXPECT_EQ(changesFor({.isGrey = true, .fullRange = true}), Texts{"range=limited"});
}

TEST(ColourChanges, NameTheTrueMatrixOfTheSource)
{
    EXPECT_EQ(colourChanges({.matrix = "ycgco"}, TableFilter::lut3d).back(),
              (Change{"matrix", "bt709", "the source has YCgCo"}));
    EXPECT_EQ(colourChanges({.matrix = "smpte240m"}, TableFilter::lut3d).back().reason,
              "the source has that of SMPTE 240M");
}

TEST(ColourChanges, NameWhatTheTablesChange)
{
    EXPECT_EQ(changesFor({.matrix = "bt709", .tables = {"gamma28", "p3"}, .isInterlaced = true}),
              (Texts{"fields=deinterlaced", "gamma=bt709", "primaries=bt709"}));
    for (const TableFilter filter : {TableFilter::lut3d, TableFilter::zscale})
        for (const char* table : {"pq", "hlg", "pq-p3", "hlg-p3"})
            EXPECT_EQ(changesFor({.matrix = "bt2020", .tables = {table}}, filter),
                      (Texts{"matrix=bt709", "dynamic-range=standard", "primaries=bt709"}))
                << table;
    EXPECT_EQ(changesFor({.matrix = "bt709", .tables = {"pq-bt709"}}), Texts{"dynamic-range=standard"});
}

TEST(ColourChanges, NameTheTablesThatCannotBeApplied)
{
    EXPECT_EQ(changesFor({.matrix = "bt709", .tables = {"gamma22", "p3"}}, TableFilter::zscale),
              (Texts{"gamma=unconverted", "primaries=unconverted"}));
    EXPECT_EQ(changesFor({.matrix = "bt709", .tables = {"hlg"}}, TableFilter::none),
              Texts{"dynamic-range=unconverted"});
}

TEST(ColourChanges, NameWhatHasNoConversion)
{
    EXPECT_EQ(changesFor({.matrix = "bt709", .unconverted = {"matrix", "gamma", "primaries"}}),
              (Texts{"matrix=unconverted", "gamma=unconverted", "primaries=unconverted"}));
    EXPECT_EQ(changesFor({.matrix = "bt2020", .tables = {"pq"}, .unconverted = {"matrix"}}),
              (Texts{"dynamic-range=standard", "primaries=bt709", "matrix=unconverted"}));
}

} // namespace stackreel::shim
