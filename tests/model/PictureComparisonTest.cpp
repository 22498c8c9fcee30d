#include "model/PictureComparison.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace stackreel
{

namespace
{

using Shade = std::function<double(int x, int y)>;

/// A picture whose pixels are computed by a function of the column and the row. The rows 0 to 63 run through
/// both halves.
SmallPicture picture(const Shade& shade)
{
    SmallPicture drawn;
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 32; ++x)
            drawn.pixels.push_back(static_cast<char>(std::lround(std::clamp(shade(x, y), 0.0, 255.0))));
    return drawn;
}

double scene(double x, double y)
{
    return 128 + 60 * std::sin(x / 4 + y / 9) + 40 * std::cos(y / 3 - x / 7);
}

double noise(int x, int y)
{
    return (x * 7919 + y * 104729) % 17 - 8;
}

Shade flat(double grey)
{
    return [grey](int, int) { return grey; };
}

struct Row {
    const char* description;
    Shade result;
    Shade source;
    bool same;
};

const Row rows[] = {
    {"the same", scene, scene, true},
    {"an encoder's loss", [](int x, int y) { return scene(x, y) + noise(x, y); }, scene, true},
    {"other brightness and contrast", [](int x, int y) { return 30 + 0.6 * scene(x, y); }, scene, true},
    {"highlights that are tone mapped", [](int x, int y) { return std::sqrt(scene(x, y) / 255) * 255; },
     scene, true},
    {"a flat grey", flat(126), scene, false},
    {"a grey with faint blocks", [](int x, int y) { return 128 + (x / 4 + y / 4) % 2; }, scene, false},
    {"black", flat(0), scene, false},
    {"the negative", [](int x, int y) { return 255 - scene(x, y); }, scene, false},
    {"halves exchanged", [](int x, int y) { return scene(x, (y + 32) % 64); }, scene, false},
    {"mirrored", [](int x, int y) { return scene(31 - x, y); }, scene, false},
    {"another crop", [](int x, int y) { return scene(x + 8, y); }, scene, false},
    {"only the upper half", [](int x, int y) { return y < 32 ? scene(x, y) : 126; }, scene, false},
    {"only the lower half", [](int x, int y) { return y < 32 ? 126 : scene(x, y); }, scene, false},
    {"black from black", flat(2), flat(0), true},
    {"black with noise from black", [](int x, int y) { return 8 + noise(x, y) / 2; }, flat(0), true},
    {"white from white", flat(250), flat(255), true},
    {"a flat colour from the same", flat(90), flat(100), true},
    {"grey from black", flat(126), flat(0), false},
    {"grey from white", flat(126), flat(255), false},
    {"a scene from black", scene, flat(0), false},
    {"black above, a scene below", [](int x, int y) { return y < 32 ? 3 : scene(x, y); },
     [](int x, int y) { return y < 32 ? 0 : scene(x, y); }, true},
    {"faint structure that the encoder lost", flat(20), [](int x, int) { return 20 + x % 4; }, true},
};

/// A frame as `ComparedPictures::parse` reads it: the picture and a row that marks the list to which it
/// belongs.
std::string frame(const SmallPicture& shown, unsigned char mark)
{
    return shown.pixels + std::string(SmallPicture::side, static_cast<char>(mark));
}

} // namespace

TEST(PictureComparison, RecognisesAPictureDespiteLossAndNoOther)
{
    for (const Row& row : rows)
        EXPECT_EQ(picture(row.result).resembles(picture(row.source)), row.same) << row.description;
}

TEST(PictureComparison, ReadsEachFrameIntoTheListThatItsMarkNames)
{
    const std::string frames = frame(picture(flat(1)), 0x10) + frame(picture(flat(2)), 0x50) +
                               frame(picture(flat(3)), 0x92) + frame(picture(flat(4)), 0x8E) +
                               frame(picture(flat(5)), 0xFF) + "cut off";
    const auto pictures = ComparedPictures::parse(frames);
    ASSERT_EQ(pictures.sourceStart.size(), 1U);
    EXPECT_EQ(pictures.sourceStart.front().pixels, picture(flat(1)).pixels);
    EXPECT_EQ(pictures.resultStart.size(), 1U);
    ASSERT_EQ(pictures.sourceEnd.size(), 2U);
    EXPECT_EQ(pictures.sourceEnd.back().pixels, picture(flat(4)).pixels);
    EXPECT_EQ(pictures.resultEnd.size(), 1U);
    EXPECT_TRUE(ComparedPictures::parse("").resultEnd.empty());
}

TEST(PictureComparison, AcceptsAnyOfTheLastPicturesOfTheSourceAsTheEnd)
{
    const auto at = [](int time) { return picture([time](int x, int y) { return scene(x + 5 * time, y); }); };
    ComparedPictures pictures;
    pictures.sourceStart = {at(0)};
    pictures.resultStart = {at(0)};
    pictures.sourceEnd = {at(7), at(8), at(9)};
    pictures.resultEnd = {at(7), at(8)};
    EXPECT_TRUE(pictures.sameStart());
    EXPECT_TRUE(pictures.sameEnd());
    pictures.resultStart = {at(2)};
    EXPECT_FALSE(pictures.sameStart()) << "shifted in time";
    pictures.resultEnd.push_back(at(12));
    EXPECT_FALSE(pictures.sameEnd()) << "shifted in time";
    pictures.resultEnd.back() = picture(flat(126));
    EXPECT_FALSE(pictures.sameEnd());
}

TEST(PictureComparison, SkipsPicturesThatCannotBeDecoded)
{
    const ComparedPictures nothing;
    EXPECT_TRUE(nothing.sameStart());
    EXPECT_TRUE(nothing.sameEnd());
    ComparedPictures pictures;
    pictures.resultStart = {picture(scene)};
    pictures.sourceEnd = {picture(scene)};
    EXPECT_TRUE(pictures.sameStart());
    EXPECT_TRUE(pictures.sameEnd());
}

TEST(PictureComparison, AResultWithoutAFirstPictureDiffersFromASourceWithOne)
{
    ComparedPictures pictures;
    pictures.sourceStart = {picture(scene)};
    EXPECT_FALSE(pictures.sameStart());
    pictures.resultStart = {picture(scene)};
    EXPECT_TRUE(pictures.sameStart());
}

} // namespace stackreel
