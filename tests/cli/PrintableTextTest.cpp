#include "cli/PrintableText.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

TEST(PrintableText, HasNoControlCharacterExceptLineFeedsAndTabs)
{
    using namespace std::string_literals;
    const std::pair<std::string, std::string> rows[] = {
        {"", ""},
        {"one\n\ttwo", "one\n\ttwo"},
        {"\x1b]0;title\x07", "?]0;title?"},
        {"\x7f\r\x9b"
         "A\0"s,
         "??\x9b"
         "A?"},
        {"\xc2\x9b"
         "31m é 東京",
         "?31m é 東京"},
        {"ends with \xc2", "ends with \xc2"},
    };
    for (const auto& [text, printable] : rows)
        EXPECT_EQ(printableText(text), printable);
}

} // namespace

} // namespace stackreel
