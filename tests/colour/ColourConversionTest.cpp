#include "colour/ColourConversion.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

using Tables = std::vector<std::string>;

/// A source of the given size whose colours are not stated.
SourceVideo untagged(int width, int height, const std::string& format = "yuv420p")
{
    return {.width = width,
            .height = height,
            .pixelFormat = format,
            .range = "unknown",
            .matrix = "unknown",
            .transfer = "unknown",
            .primaries = "unknown",
            .fieldOrder = "progressive"};
}

SourceVideo tagged(const std::string& matrix, const std::string& transfer, const std::string& primaries,
                   const std::string& range = "tv")
{
    SourceVideo source = untagged(1920, 1080);
    source.range = range;
    source.matrix = matrix;
    source.transfer = transfer;
    source.primaries = primaries;
    return source;
}

bool changesColours(const ColourConversion& conversion)
{
    const bool isBt709 = !conversion.isRgb && conversion.matrix == "bt709";
    return !isBt709 || conversion.fullRange || !conversion.tables.empty();
}

} // namespace

TEST(ColourConversion, NothingChangesForBt709)
{
    for (const SourceVideo& source :
         {untagged(1920, 1080), untagged(1280, 536), untagged(1024, 578), untagged(720, 1280),
          tagged("bt709", "bt709", "bt709"), tagged("bt709", "unknown", "unknown", "unknown"),
          tagged("bt709", "iec61966-2-1", "bt709"), tagged("bt709", "bt709", "bt470bg"),
          untagged(1920, 1080, "yuv422p10le")}) {
        const ColourConversion conversion = conversionToBt709(source);
        EXPECT_FALSE(changesColours(conversion)) << conversion.matrix;
    }
}

TEST(ColourConversion, SmallPicturesWithoutTagsCountAsBt601)
{
    for (const SourceVideo& source : {untagged(640, 360), untagged(720, 576), untagged(1024, 576)}) {
        const ColourConversion conversion = conversionToBt709(source);
        EXPECT_EQ(conversion.matrix, "bt601");
        EXPECT_EQ(conversion.tables, Tables{});
        EXPECT_TRUE(changesColours(conversion));
    }
    for (const int height : {480, 486, 488})
        EXPECT_EQ(conversionToBt709(untagged(720, height)).tables, Tables{"smpte170m"});
}

TEST(ColourConversion, SmallPicturesOf480LinesHaveTheirPrimariesUnlessTheTagsSayOtherwise)
{
    const struct {
        const char* matrix;
        const char* transfer;
        Tables tables;
    } rows[] = {
        {"smpte170m", "unknown", {"smpte170m"}},
        {"smpte170m", "smpte170m", {"smpte170m"}},
        {"unknown", "smpte170m", {"smpte170m"}},
        {"bt709", "unknown", {}},
        {"bt470bg", "unknown", {}},
        {"smpte170m", "iec61966-2-1", {}},
        {"unknown", "bt470bg", {"gamma28"}},
    };
    for (const auto& row : rows) {
        SourceVideo source = untagged(720, 480);
        source.matrix = row.matrix;
        source.transfer = row.transfer;
        EXPECT_EQ(conversionToBt709(source).tables, row.tables) << row.matrix << ", " << row.transfer;
    }
}

TEST(ColourConversion, FollowsTheTags)
{
    const struct {
        SourceVideo source;
        const char* matrix;
        Tables tables;
        bool fullRange;
    } rows[] = {
        {tagged("smpte170m", "smpte170m", "smpte170m"), "bt601", {"smpte170m"}, false},
        {tagged("bt470bg", "smpte170m", "bt470bg"), "bt601", {}, false},
        {tagged("smpte240m", "smpte240m", "smpte240m"), "smpte240m", {"smpte170m"}, false},
        {tagged("fcc", "bt709", "bt709"), "fcc", {}, false},
        {tagged("bt709", "bt709", "bt709", "pc"), "bt709", {}, true},
        {tagged("bt709", "bt470m", "bt709"), "bt709", {"gamma22"}, false},
        {tagged("bt470bg", "bt470bg", "bt470bg"), "bt601", {"gamma28"}, false},
        {tagged("bt709", "bt709", "smpte432"), "bt709", {"p3"}, false},
        {tagged("bt709", "gamma22", "smpte432"), "bt709", {"gamma22", "p3"}, false},
        {tagged("bt2020nc", "bt2020-10", "bt2020"), "bt2020", {"bt2020"}, false},
        {tagged("bt2020nc", "smpte2084", "bt2020"), "bt2020", {"pq"}, false},
        {tagged("bt2020nc", "arib-std-b67", "bt2020"), "bt2020", {"hlg"}, false},
        {tagged("unknown", "arib-std-b67", "unknown", "pc"), "bt2020", {"hlg"}, true},
        {tagged("reserved", "unknown", "bt2020"), "bt2020", {"bt2020"}, false},
        {tagged("bt2020nc", "unknown", "unknown"), "bt2020", {"bt2020"}, false},
        {tagged("bt2020nc", "smpte2084", "unknown"), "bt2020", {"pq"}, false},
        {tagged("bt2020nc", "smpte2084", "smpte432"), "bt2020", {"pq-p3"}, false},
        {tagged("bt709", "smpte2084", "bt709"), "bt709", {"pq-bt709"}, false},
        {tagged("bt2020nc", "arib-std-b67", "smpte431"), "bt2020", {"hlg-p3"}, false},
        {tagged("bt709", "arib-std-b67", "bt709"), "bt709", {"hlg-bt709"}, false},
        {tagged("ycgco", "bt709", "bt709", "pc"), "ycgco", {}, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.source.matrix + ", " + row.source.transfer + ", " + row.source.primaries);
        const ColourConversion conversion = conversionToBt709(row.source);
        EXPECT_EQ(conversion.matrix, row.matrix);
        EXPECT_EQ(conversion.tables, row.tables);
        EXPECT_EQ(conversion.fullRange, row.fullRange);
        EXPECT_TRUE(changesColours(conversion));
    }
    EXPECT_TRUE(conversionToBt709(tagged("bt2020nc", "smpte2084", "bt2020")).isHdr());
    EXPECT_TRUE(conversionToBt709(tagged("bt2020nc", "arib-std-b67", "smpte432")).isHdr());
    EXPECT_FALSE(conversionToBt709(tagged("bt2020nc", "bt2020-10", "bt2020")).isHdr());
}

TEST(ColourConversion, NamesWhatItDoesNotConvert)
{
    const struct {
        SourceVideo source;
        std::vector<std::string> unconverted;
    } rows[] = {
        {tagged("bt709", "bt709", "bt709"), {}},
        {tagged("reserved", "unknown", "unknown"), {}},
        {tagged("ycgco", "bt709", "bt470bg"), {}},
        {tagged("chroma-derived-nc", "bt709", "bt709"), {"matrix"}},
        {tagged("bt709", "bt709", "film"), {"primaries"}},
        {tagged("smpte2085", "log316", "smpte428"), {"matrix", "gamma", "primaries"}},
        {tagged("ictcp", "smpte2084", "bt2020"), {"matrix"}},
        {tagged("bt2020c", "bt2020-10", "bt2020"), {"matrix"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(conversionToBt709(row.source).unconverted, row.unconverted) << row.source.matrix;
    EXPECT_EQ(conversionToBt709(rows[3].source).matrix, "bt709");
    for (const auto& row : {rows[6], rows[7]})
        EXPECT_EQ(conversionToBt709(row.source).matrix, "bt2020");
    SourceVideo rgb = untagged(720, 480, "gbrp");
    rgb.matrix = "gbr";
    EXPECT_EQ(conversionToBt709(rgb).unconverted, Tables{});
}

TEST(ColourConversion, GreyHasTheFullRangeUnlessTheTagsSayOtherwise)
{
    SourceVideo grey = untagged(640, 360, "gray10le");
    for (const char* range : {"unknown", "pc"}) {
        grey.range = range;
        EXPECT_TRUE(conversionToBt709(grey).fullRange) << range;
    }
    grey.range = "tv";
    EXPECT_FALSE(conversionToBt709(grey).fullRange);
}

TEST(ColourConversion, PixelFormatsTellRgbGreyAndFullRange)
{
    for (const char* format : {"rgb24", "bgr0", "gbrp", "gbrap12le", "pal8", "x2rgb10le"}) {
        const ColourConversion conversion = conversionToBt709(untagged(720, 480, format));
        EXPECT_TRUE(conversion.isRgb) << format;
        EXPECT_EQ(conversion.matrix, "") << format;
        EXPECT_FALSE(conversion.fullRange) << format;
        EXPECT_EQ(conversion.tables, Tables{}) << format;
        EXPECT_TRUE(changesColours(conversion)) << format;
    }
    EXPECT_TRUE(conversionToBt709(untagged(1920, 1080, "yuvj420p")).fullRange);
    EXPECT_TRUE(conversionToBt709(untagged(1920, 1080, "gray")).isGrey);
}

TEST(ColourConversion, InterlacedPicturesAreFound)
{
    SourceVideo source = untagged(1920, 1080);
    for (const char* order : {"tt", "bb", "tb", "bt"}) {
        source.fieldOrder = order;
        EXPECT_TRUE(conversionToBt709(source).isInterlaced) << order;
    }
    for (const char* order : {"progressive", "unknown", ""}) {
        source.fieldOrder = order;
        EXPECT_FALSE(conversionToBt709(source).isInterlaced) << order;
    }
    source.rotation = -90;
    EXPECT_EQ(conversionToBt709(source).rotation, -90);
    source.codec = "dvvideo";
    EXPECT_TRUE(conversionToBt709(source).isInterlaced) << "ffprobe does not know the field order of DV";
}

} // namespace stackreel
