#include "cli/RecipeText.h"

#include "cli/CliError.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

Recipe parse(const std::string& json)
{
    return RecipeText::parse(json, "r.json");
}

std::string failure(const std::string& json)
{
    try {
        parse(json);
    } catch (const CliError& error) {
        return error.what();
    }
    return "";
}

/// A recipe with these values beside its version.
std::string with(const std::string& values)
{
    return R"({"stackreelRecipe": 1, )" + values + "}";
}

} // namespace

TEST(RecipeText, ReadsEveryValue)
{
    EXPECT_EQ(parse(R"({"stackreelRecipe": 1})"), Recipe());
    EXPECT_EQ(parse(with(R"("aspect": "4:5", "top": {"x": 0.1, "y": 0.2, "width": 0.3, "height": 0.4},
                            "bottom": {"x": 0, "y": 0, "width": 1, "height": 1}, "from": 0.5, "to": 2,
                            "sound": false, "audioTrack": 3)")),
              (Recipe{.aspect = OutputAspect::feed,
                      .size = {},
                      .top = CropRegion{.x = 0.1, .y = 0.2, .width = 0.3, .height = 0.4},
                      .bottom = CropRegion{.x = 0, .y = 0, .width = 1, .height = 1},
                      .from = 0.5,
                      .to = 2,
                      .sound = false,
                      .audioTrack = 3}));
    for (const char* aspect : {"", R"("aspect": "Custom", )"}) {
        const Recipe custom = parse(with(aspect + std::string(R"("size": {"width": 720, "height": 1280})")));
        EXPECT_EQ(custom.aspect, OutputAspect::custom);
        EXPECT_EQ(custom.size, (PixelSize{.width = 720, .height = 1280}));
    }
}

TEST(RecipeText, FitsCropsIntoTheFrame)
{
    EXPECT_EQ(parse(with(R"("top": {"x": -0.5, "y": 2, "width": 0.5, "height": 0.01})")).top,
              (CropRegion{.x = 0, .y = 0.94, .width = 0.5, .height = 0.06}));
}

TEST(RecipeText, ReadsBackExactlyWhatARequestHas)
{
    ExportRequest request;
    request.media = {.width = 1918,
                     .height = 1078,
                     .rotation = 0,
                     .duration = 3600 / 7.0,
                     .videoCodec = "h264",
                     .audioCodec = "aac"};
    for (int i = 1; i < 2000; ++i) {
        const double fraction = i / 2011.0;
        request.top = CropRegion{.x = fraction, .y = 1 - fraction, .width = fraction / 3, .height = 0.1 + 0.2}
                          .clampedToFrame();
        request.bottom =
            CropRegion{.x = fraction * fraction, .y = 0, .width = 1 - fraction, .height = 1}.clampedToFrame();
        request.trimStart = fraction;
        request.trimEnd = fraction * 100 + 1;
        request.audioTrack = i % 3;
        const Recipe recipe = Recipe::of(request);
        ASSERT_EQ(parse(recipe.json()), recipe) << recipe.json();
        ASSERT_EQ(parse(recipe.jsonLines()), recipe);
    }
}

struct BadRecipe {
    std::string json;
    std::string message;
};

const std::string valueOf = "The value of “";
const std::string inRecipe = "” in the recipe “r.json” is not ";

const std::vector<BadRecipe> badRecipes = {
    {"", "The recipe “r.json” is not valid JSON."},
    {"{", "The recipe “r.json” is not valid JSON."},
    {std::string("{\"stackreelRecipe\": 1}\0", 23), "The recipe “r.json” is not valid JSON."},
    {"[]", "“r.json” is not a recipe: “stackreelRecipe” is missing."},
    {R"({"aspect": "9:16"})", "“r.json” is not a recipe: “stackreelRecipe” is missing."},
    {R"({"stackreelRecipe": 2, "new": 1})",
     "The recipe “r.json” has version 2, and this program knows recipes up to version 1. Use a newer "
     "Stackreel."},
    {R"({"stackreelRecipe": 0})", valueOf + "stackreelRecipe" + inRecipe + "a version from 1."},
    {R"({"stackreelRecipe": 1.5})", valueOf + "stackreelRecipe" + inRecipe + "a version from 1."},
    {R"({"stackreelRecipe": "1"})", valueOf + "stackreelRecipe" + inRecipe + "a version from 1."},
    {R"({"stackreelRecipe": 1e300})", valueOf + "stackreelRecipe" + inRecipe + "a version from 1."},
    {with(R"("botom": {})"), "The recipe “r.json” has the unknown key “botom”. Did you mean “bottom”?"},
    {with(R"("crf": 20)"), "The recipe “r.json” has the unknown key “crf”."},
    {with(R"("top": {"x": 0, "y": 0, "width": 1, "heigth": 1})"),
     "The recipe “r.json” has the unknown key “top.heigth”. Did you mean “top.height”?"},
    {with(R"("top": {"x": 0, "y": 0, "width": 1})"),
     valueOf + "top.height" + inRecipe + "a fraction of the frame, such as 0.45."},
    {with(R"("top": {"x": 0, "y": 0, "width": 1, "height": "1"})"),
     valueOf + "top.height" + inRecipe + "a fraction of the frame, such as 0.45."},
    {with(R"("top": [0, 0, 1, 1])"), valueOf + "top" + inRecipe + "a region with x, y, width and height."},
    {with(R"("aspect": "16:9")"), valueOf + "aspect" + inRecipe + "9:16, 4:5, 1:1 or Custom."},
    {with(R"("aspect": 1)"), valueOf + "aspect" + inRecipe + "9:16, 4:5, 1:1 or Custom."},
    {with(R"("size": {"width": 1, "height": 2})"),
     valueOf + "size.width" + inRecipe + "a number of pixels from 2 to 16384."},
    {with(R"("size": {"width": 2, "height": 16385})"),
     valueOf + "size.height" + inRecipe + "a number of pixels from 2 to 16384."},
    {with(R"("size": {"width": 2.5, "height": 2})"),
     valueOf + "size.width" + inRecipe + "a number of pixels from 2 to 16384."},
    {with(R"("aspect": "1:1", "size": {"width": 2, "height": 2})"),
     valueOf + "size" + inRecipe + "possible beside an aspect, which has a size of its own."},
    {with(R"("from": -1)"), valueOf + "from" + inRecipe + "a time in seconds, such as 12.5."},
    {with(R"("to": null)"), valueOf + "to" + inRecipe + "a time in seconds, such as 12.5."},
    {with(R"("from": 2, "to": 2)"), valueOf + "to" + inRecipe + "behind “from”."},
    {with(R"("audioTrack": 0)"), valueOf + "audioTrack" + inRecipe + "the number of a sound track from 1."},
    {with(R"("sound": 1)"), valueOf + "sound" + inRecipe + "true or false."},
};

TEST(RecipeText, SaysWhatIsWrong)
{
    for (const BadRecipe& bad : badRecipes)
        EXPECT_EQ(failure(bad.json), bad.message) << bad.json;
}

TEST(RecipeText, RecognisesRecipesOfAnyVersion)
{
    EXPECT_TRUE(RecipeText::isRecipe(R"({"stackreelRecipe": 7, "new": []})"));
    for (const char* text : {"", "A comment.", "{}", "[\"stackreelRecipe\"]", R"({"stackreelRecipe": 1)"})
        EXPECT_FALSE(RecipeText::isRecipe(text)) << text;
}

} // namespace stackreel
