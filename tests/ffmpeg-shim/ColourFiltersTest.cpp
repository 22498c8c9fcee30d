#include "ffmpeg-shim/ColourFilters.h"

#include <gtest/gtest.h>

namespace stackreel::shim
{

namespace
{

const std::string tags = ",setparams=range=tv:color_primaries=bt709:color_trc=bt709:colorspace=bt709";
const std::string plain = ":flags=bicubic";
const std::string exact = ":flags=bicubic+accurate_rnd+full_chroma_inp+full_chroma_int";

std::string graph(const std::string& source, const std::string& scale, const std::string& end)
{
    const auto half = [&](const std::string& name) {
        return "[" + name + "Source]crop=w=8:h=6:x=2:y=3,scale=1080:675" + scale + ",setsar=1[" + name + "];";
    };
    return "[0:v:0]" + source + "split=2[topSource][bottomSource];" + half("top") + half("bottom") +
           "[top][bottom]vstack=inputs=2,format=yuv420p" + end + "[video]";
}

/// The filter that converts matrix and range.
std::string converted(const std::string& matrix, const std::string& range)
{
    return ",colorspace=ispace=" + matrix + ":irange=" + range +
           ":iprimaries=bt709:itrc=bt709:space=bt709:range=tv:primaries=bt709:trc=bt709";
}

Arguments exporting(const std::string& filters)
{
    return {"-y", "-i", "in", "-filter_complex", filters, "-map", "[video]", "out"};
}

/// The graph of an export after it was changed.
std::string changed(const ColourConversion& conversion, const ColourTables& tables = {})
{
    return withBt709(exporting(graph("", plain, "")), conversion, tables).at(4);
}

} // namespace

TEST(ColourFilters, OnlyTagsAreSetWhereTheColoursStay)
{
    EXPECT_EQ(changed({.matrix = "bt709"}), graph("", plain, tags));
    EXPECT_EQ(changed({.isGrey = true, .fullRange = true}), graph("", plain, tags));
}

TEST(ColourFilters, MatrixAndRangeAreConvertedAfterTheHalvesAreStacked)
{
    EXPECT_EQ(changed({.matrix = "bt601"}), graph("", plain, converted("smpte170m", "tv") + tags));
    EXPECT_EQ(changed({.matrix = "bt2020"}), graph("", plain, converted("bt2020nc", "tv") + tags));
    const std::string fullRange = plain + ":in_range=pc:out_range=pc";
    EXPECT_EQ(changed({.matrix = "bt709", .fullRange = true}),
              graph("", fullRange, converted("bt709", "pc") + tags));
}

TEST(ColourFilters, GreyOfLimitedRangeKeepsItsSamples)
{
    EXPECT_EQ(changed({.isGrey = true}), graph("", plain + ":in_range=pc:out_range=pc", tags));
}

TEST(ColourFilters, YcgcoIsConvertedBeforeTheSplit)
{
    const std::string toBt709 = "format=yuv444p10" + converted("ycgco", "tv") + ",";
    EXPECT_EQ(changed({.matrix = "ycgco"}),
              graph("setparams=colorspace=bt709,scale=in_range=tv:out_range=tv," + toBt709, plain, tags));
    EXPECT_EQ(changed({.matrix = "ycgco", .fullRange = true}),
              graph("setparams=colorspace=bt709,scale=in_range=pc:out_range=tv," + toBt709, plain, tags));
}

TEST(ColourFilters, AMatrixThatIsNotConvertedLosesItsTag)
{
    EXPECT_EQ(changed({.matrix = "bt709", .unconverted = {"matrix"}}),
              graph("setparams=colorspace=bt709,", plain, tags));
    EXPECT_EQ(changed({.matrix = "bt709", .unconverted = {"gamma", "primaries"}}), graph("", plain, tags));
}

TEST(ColourFilters, RgbIsConvertedWhereEachHalfIsScaled)
{
    EXPECT_EQ(changed({.isRgb = true}), graph("", exact + ":out_color_matrix=bt709:out_range=tv", tags));
}

TEST(ColourFilters, TablesAreAppliedInTheirOrder)
{
    const std::string lut = ",lut3d=file=/a b/";
    EXPECT_EQ(changed({.matrix = "bt709", .tables = {"gamma22", "p3"}}, {TableFilter::lut3d, "/a b"}),
              graph("",
                    exact + ":in_color_matrix=bt709:in_range=tv,format=gbrp10" + lut +
                        "gamma22.cube:interp=tetrahedral" + lut +
                        "p3.cube:interp=tetrahedral,scale=flags=accurate_rnd+full_chroma_inp+full_chroma_int:"
                        "out_color_matrix=bt709:out_range=tv",
                    tags));
}

TEST(ColourFilters, HighDynamicRangeFallsBackToZscale)
{
    const std::string result =
        changed({.matrix = "bt2020", .tables = {"hlg"}}, {TableFilter::zscale, "/nowhere"});
    EXPECT_EQ(result.find("lut3d"), std::string::npos);
    EXPECT_NE(result.find("tonemap=mobius"), std::string::npos);
}

TEST(ColourFilters, ZscaleGetsAllColoursOfTheSource)
{
    const auto has = [](const ColourConversion& conversion, const std::string& text) {
        return changed(conversion, {TableFilter::zscale, "/nowhere"}).find(text) != std::string::npos;
    };
    EXPECT_TRUE(has({.matrix = "bt2020", .tables = {"pq"}},
                    ":flags=bicubic,format=yuv444p10,setparams=range=tv:color_primaries=bt2020:"
                    "color_trc=smpte2084:colorspace=bt2020nc,zscale=t=linear"));
    EXPECT_TRUE(has({.matrix = "bt601", .fullRange = true, .tables = {"hlg-p3"}},
                    ":in_range=pc:out_range=pc,format=yuv444p10,setparams=range=pc:color_primaries=smpte432:"
                    "color_trc=arib-std-b67:colorspace=smpte170m,zscale=t=linear"));
    EXPECT_TRUE(has({.isRgb = true, .tables = {"pq-bt709"}},
                    ":out_color_matrix=bt709:out_range=tv,format=yuv444p10,setparams=range=tv:"
                    "color_primaries=bt709:color_trc=smpte2084:colorspace=bt709,zscale=t=linear"));
}

TEST(ColourFilters, TablesThatCannotBeAppliedAreLeftOut)
{
    const ColourConversion p3{.matrix = "bt709", .tables = {"p3"}};
    const ColourConversion pq{.matrix = "bt709", .tables = {"pq"}};
    EXPECT_EQ(changed(p3, {TableFilter::zscale, "/tables"}), graph("", plain, tags));
    for (const ColourConversion& conversion : {p3, pq})
        EXPECT_EQ(changed(conversion, {TableFilter::none, "/tables"}), graph("", plain, tags));
    EXPECT_TRUE(convertsTables(p3, TableFilter::lut3d));
    EXPECT_FALSE(convertsTables(p3, TableFilter::zscale));
    EXPECT_TRUE(convertsTables(pq, TableFilter::zscale));
    EXPECT_FALSE(convertsTables(pq, TableFilter::none));
}

TEST(ColourFilters, InterlacedPicturesAreDeinterlacedBeforeTheSplit)
{
    EXPECT_EQ(changed({.matrix = "bt709", .isInterlaced = true}),
              graph("bwdif=mode=send_frame:parity=auto:deint=interlaced,", plain, tags));
}

TEST(ColourFilters, TurnedPicturesAreTurnedBackWhileTheyAreDeinterlaced)
{
    const std::string bwdif = "bwdif=mode=send_frame:parity=auto:deint=interlaced,";
    const std::string clockwise = "transpose=clock,", counterclockwise = "transpose=cclock,";
    const auto changedAt = [](int rotation) {
        return changed({.matrix = "bt709", .isInterlaced = true, .rotation = rotation});
    };
    for (const int rotation : {90, -270})
        EXPECT_EQ(changedAt(rotation), graph(clockwise + bwdif + counterclockwise, plain, tags)) << rotation;
    for (const int rotation : {-90, 270})
        EXPECT_EQ(changedAt(rotation), graph(counterclockwise + bwdif + clockwise, plain, tags)) << rotation;
    for (const int rotation : {180, -180})
        EXPECT_EQ(changedAt(rotation), graph("vflip," + bwdif + "vflip,", plain, tags)) << rotation;
    for (const int rotation : {1, 45})
        EXPECT_EQ(changedAt(rotation), graph(bwdif, plain, tags)) << rotation;
    EXPECT_EQ(changed({.matrix = "bt709", .rotation = 90}), graph("", plain, tags));
}

TEST(ColourFilters, APreviewCopyIsConvertedAsWell)
{
    const std::string scale = "scale=960:'max(2,2*round(960*ih/iw/2))'";
    const Arguments copy{"-i", "in", "-vf", scale + ",format=yuv420p", "out"};
    ASSERT_TRUE(canConvertColours(copy));
    EXPECT_EQ(withBt709(copy, {.matrix = "bt709"}, {}).at(3), scale + ",format=yuv420p" + tags);
    EXPECT_EQ(withBt709(copy, {.isRgb = true, .isInterlaced = true}, {}).at(3),
              "bwdif=mode=send_frame:parity=auto:deint=interlaced," + scale + exact +
                  ":out_color_matrix=bt709:out_range=tv,format=yuv420p" + tags);
}

TEST(ColourFilters, OtherArgumentsStayAsTheyAre)
{
    const std::string known = graph("", plain, "");
    const Arguments rows[] = {
        {},
        {"-filter_complex"},
        {"-i"},
        {"-filter_complex", known},
        {"-i", "in", "-i", "other", "-filter_complex", known},
        {"-i", "in", "-filter_complex", known, "-filter_complex", known},
        {"-i", "in", "-filter_complex", known, "-vf", "null"},
        exporting("[0:v:0]format=yuv420p[video]"),
        exporting(graph("hflip,", plain, "")),
        exporting(graph("", ":flags=area", "")),
        exporting(graph("", plain, ",hflip")),
        {"-i", "in", "-vf", "scale=960:540,format=yuv420p"},
    };
    for (const Arguments& arguments : rows) {
        EXPECT_FALSE(canConvertColours(arguments)) << testing::PrintToString(arguments);
        EXPECT_EQ(withBt709(arguments, {.matrix = "bt601"}, {}), arguments);
    }
}

TEST(ColourFilters, ThePreferredTableFilterIsThatOfTheListing)
{
    const std::string lut = " TSC lut3d             V->V       Adjust colors using a 3D LUT.\n";
    const std::string zscale = " .SC zscale            V->V       Apply resizing.\n";
    const std::string tonemap = " .S tonemap           V->V       Conversion.\n";
    EXPECT_EQ(preferredTableFilter(lut + zscale + tonemap, true), TableFilter::lut3d);
    EXPECT_EQ(preferredTableFilter(lut + zscale + tonemap, false), TableFilter::zscale);
    EXPECT_EQ(preferredTableFilter(zscale + tonemap, true), TableFilter::zscale);
    EXPECT_EQ(preferredTableFilter(zscale, true), TableFilter::none);
    EXPECT_EQ(preferredTableFilter(" ... tonemap_opencl lut3d_x\n", true), TableFilter::none);
    EXPECT_EQ(preferredTableFilter("", true), TableFilter::none);
}

TEST(ColourFilters, PathsAreEscapedForTheGraphAndForTheFilter)
{
    EXPECT_EQ(filterValue("/plain path/%"), "/plain path/%");
    EXPECT_EQ(filterValue("a,b;[c]"), "a\\,b\\;\\[c\\]");
    EXPECT_EQ(filterValue("a:b"), "a\\\\:b");
    EXPECT_EQ(filterValue("it's"), "it\\\\\\'s");
    EXPECT_EQ(filterValue("\\"), "\\\\\\\\");
}

} // namespace stackreel::shim
