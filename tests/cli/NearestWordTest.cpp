#include "cli/NearestWord.h"

#include <gtest/gtest.h>

#include <array>

namespace stackreel
{

namespace
{

const std::array<std::string, 4> words = {"--overwrite", "--to", "--top", "--json"};

TEST(NearestWord, FindsAWordWithFewWrongLetters)
{
    EXPECT_EQ(nearestWord("--overwrite", words), "--overwrite");
    EXPECT_EQ(nearestWord("--ovrwrit", words), "--overwrite");
    EXPECT_EQ(nearestWord("-overwrite", words), "--overwrite");
    EXPECT_EQ(nearestWord("--tp", words), "--to");
    EXPECT_EQ(nearestWord("--jsno", words), "--json");
}

TEST(NearestWord, FindsNoneForADifferentWord)
{
    EXPECT_FALSE(nearestWord("", words));
    EXPECT_FALSE(nearestWord("-x", words));
    EXPECT_FALSE(nearestWord("--verbose", words));
    EXPECT_FALSE(nearestWord(std::string(1'000'000, 'x'), words));
    EXPECT_FALSE(nearestWord("--to", {}));
}

} // namespace

} // namespace stackreel
