#include "cli/CapturedText.h"

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>

namespace stackreel
{

namespace
{

void append(const std::filesystem::path& file, const std::string& text)
{
    std::ofstream(file, std::ios::app | std::ios::binary) << text;
}

TEST(CapturedText, ReturnsTheTextAppendedSinceTheLastCall)
{
    const TemporaryDirectory directory;
    const auto file = directory.write("stderr", "");
    CapturedText text;
    text.open(file);
    EXPECT_EQ(text.readAppended(), "");
    append(file, "one\n");
    EXPECT_EQ(text.readAppended(), "one\n");
    EXPECT_EQ(text.readAppended(), "");
    append(file, "two");
    append(file, "\0three");
    EXPECT_EQ(text.readAppended(), "two");
}

TEST(CapturedText, StaysReadableWhenTheFileIsRemoved)
{
    const TemporaryDirectory directory;
    const auto file = directory.write("stderr", "last words");
    CapturedText text;
    text.open(file);
    std::filesystem::remove(file);
    EXPECT_EQ(text.readAppended(), "last words");
}

TEST(CapturedText, ReturnsOnlyTheEndOfALongText)
{
    const TemporaryDirectory directory;
    const auto file = directory.write("stderr", std::string(1024 * 1024, 'x') + "end");
    CapturedText text;
    text.open(file);
    const std::string tail = text.readAppended();
    EXPECT_EQ(tail.size(), 64U * 1024 + 1);
    EXPECT_EQ(tail.front(), '\n');
    EXPECT_TRUE(tail.ends_with("xend"));
    append(file, "more");
    EXPECT_EQ(text.readAppended(), "more");
}

TEST(CapturedText, ReturnsNothingForAMissingFile)
{
    CapturedText text;
    EXPECT_EQ(text.readAppended(), "");
    text.open("/nonexistent/stderr");
    EXPECT_EQ(text.readAppended(), "");
}

} // namespace

} // namespace stackreel
