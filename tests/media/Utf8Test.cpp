#include "media/Utf8.h"

#include <gtest/gtest.h>

namespace stackreel
{

TEST(ReplacingInvalidUtf8, KeepsValidText)
{
    using namespace std::string_literals;
    for (const std::string& text : {""s, "plain"s, "naïve 東京 🎬"s, "\0nul\0"s, "\xEF\xBB\xBFmark"s,
                                    "\x7F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF"s})
        EXPECT_EQ(replacingInvalidUtf8(text), text);
}

TEST(ReplacingInvalidUtf8, ReplacesEachBrokenCharacterOnce)
{
    struct Row {
        std::string_view bytes;
        std::string_view expected;
    };
    const Row rows[] = {
        {"caf\xE9!", "caf\uFFFD!"},
        {"\xFF\xFE", "\uFFFD\uFFFD"},
        {"\x80\xBF", "\uFFFD\uFFFD"},
        {"a\xF0\x9F\x98z", "a\uFFFDz"},
        {"\xF0\x9F\x98", "\uFFFD"},
        {"\xF0\x9F", "\uFFFD"},
        {"\xF0", "\uFFFD"},
        {"\xE2\x82\n", "\uFFFD\n"},
        {"\xE2\x82\xE2\x82\xAC", "\uFFFD€"},
        {"\xC2", "\uFFFD"},
        {"\xC2\xC3\xA9", "\uFFFDé"},
        {"\xC0\xAF", "\uFFFD\uFFFD"},
        {"\xE0\x80\xAF", "\uFFFD\uFFFD\uFFFD"},
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
        {"\xF0\x8F\xBF\xBF", "\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF5\x80", "\uFFFD\uFFFD"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(replacingInvalidUtf8(row.bytes), row.expected) << testing::PrintToString(row.bytes);
}

} // namespace stackreel
