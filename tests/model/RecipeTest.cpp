#include "model/Recipe.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

const CropRegion left = {.x = 0.04, .y = 0.14, .width = 0.3, .height = 0.72};
const CropRegion right = {.x = 0.5, .y = 0.1, .width = 1 / 3.0, .height = 0.5};

const ExportRequest request = {.input = "/a.mov",
                               .output = "/a.mp4",
                               .media = {.width = 1920,
                                         .height = 1080,
                                         .rotation = 0,
                                         .duration = 10,
                                         .videoCodec = "h264",
                                         .audioCodec = "aac"},
                               .top = left,
                               .bottom = right,
                               .settings = {},
                               .trimStart = 1.5,
                               .trimEnd = 7.25};

} // namespace

TEST(Recipe, HasTheChoicesOfARequest)
{
    EXPECT_EQ(Recipe::of(request), (Recipe{.aspect = OutputAspect::portrait,
                                           .size = {},
                                           .top = left,
                                           .bottom = right,
                                           .from = 1.5,
                                           .to = 7.25,
                                           .sound = true}));
}

TEST(Recipe, HasTheSizeOfACustomOutputOnly)
{
    ExportRequest custom = request;
    custom.settings = {.aspect = OutputAspect::custom, .customWidth = 721, .customHeight = 1280};
    EXPECT_EQ(Recipe::of(custom).size, (PixelSize{.width = 720, .height = 1280}));
    EXPECT_EQ(Recipe::of(custom).settings().size(), custom.settings.size());
}

TEST(Recipe, LeavesTheEndOpenWhereTheRequestEndsWithTheSource)
{
    ExportRequest whole = request;
    whole.trimEnd = whole.media.duration;
    EXPECT_EQ(Recipe::of(whole).to, std::nullopt);
    whole.trimEnd = 99;
    EXPECT_EQ(Recipe::of(whole).to, 99);
}

TEST(Recipe, ChoicesWinOverThoseBelow)
{
    const Recipe base = Recipe::of(request);
    EXPECT_EQ(Recipe().over(base), base);
    EXPECT_EQ(base.over(Recipe()), base);
    const Recipe own = {.aspect = OutputAspect::square,
                        .size = {},
                        .top = right,
                        .bottom = {},
                        .from = 0,
                        .to = {},
                        .sound = false};
    EXPECT_EQ(own.over(base), (Recipe{.aspect = OutputAspect::square,
                                      .size = {},
                                      .top = right,
                                      .bottom = right,
                                      .from = 0,
                                      .to = 7.25,
                                      .sound = false}));
}

TEST(Recipe, TakesASizeFromBelowOnlyForACustomAspect)
{
    Recipe base;
    base.aspect = OutputAspect::custom;
    base.size = PixelSize{.width = 640, .height = 640};
    Recipe own;
    EXPECT_EQ(own.over(base), base);
    own.aspect = OutputAspect::custom;
    EXPECT_EQ(own.over(base), base);
    own.aspect = OutputAspect::feed;
    EXPECT_EQ(own.over(base), own);
}

TEST(Recipe, IsWrittenAsJson)
{
    EXPECT_EQ(Recipe::of(request).json(),
              R"({"stackreelRecipe":1,"aspect":"9:16","top":{"x":0.04,"y":0.14,"width":0.3,"height":0.72},)"
              R"("bottom":{"x":0.5,"y":0.1,"width":0.3333333333333333,"height":0.5},"from":1.5,"to":7.25,)"
              R"("sound":true})");
    EXPECT_EQ(Recipe().jsonLines(), "{\n  \"stackreelRecipe\": 1\n}\n");
    ExportRequest custom = request;
    custom.settings.aspect = OutputAspect::custom;
    EXPECT_NE(Recipe::of(custom).json().find(R"("size":{"width":1080,"height":1920})"), std::string::npos);
    EXPECT_EQ(Recipe::of(custom).json().find("aspect"), std::string::npos);
}

} // namespace stackreel
