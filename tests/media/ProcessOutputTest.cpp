#include "media/ProcessOutput.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

using namespace std::string_literals;

std::string errorTextOf(std::string standardError)
{
    return ProcessOutput{
        .status = 1, .standardOutput = "never shown", .standardError = std::move(standardError)}
        .errorText();
}

std::string lines(int first, int last)
{
    std::string text;
    for (int line = first; line <= last; ++line)
        text += "line " + std::to_string(line) + (line == last ? "" : "\n");
    return text;
}

} // namespace

TEST(ErrorText, KeepsTheLastEightNonEmptyLines)
{
    struct Row {
        const char* name;
        std::string bytes;
        std::string expected;
    };
    const Row rows[] = {
        {"nothing", "", ""},
        {"a line feed", "\n", ""},
        {"line feeds", "\n\n\n", ""},
        {"one line", "a", "a"},
        {"one ended line", "a\n", "a"},
        {"a blank line between", "a\n\nb\n", "a\nb"},
        {"blank lines around", "\n\na\n\n\n\nb\n\n", "a\nb"},
        {"seven lines", lines(1, 7), lines(1, 7)},
        {"eight lines", lines(1, 8) + "\n", lines(1, 8)},
        {"nine lines", lines(1, 9) + "\n", lines(2, 9)},
        {"twelve lines", lines(1, 12) + "\n", lines(5, 12)},
        {"blank lines do not count", "\n\n" + lines(1, 4) + "\n\n\n" + lines(5, 12), lines(5, 12)},
        {"lines of blanks stay", "a\n   \n\t\nb\n", "a\n   \n\t\nb"},
        {"nothing is trimmed", "  a  \n\tb\t\n", "  a  \n\tb\t"},
        {"a lone carriage return", "frame=1\rframe=2\rframe=3\ndone\n", "frame=1\rframe=2\rframe=3\ndone"},
        {"CR LF does not split", "a\r\nb\r\nc", "a\r\nb\r\nc"},
        {"CR LF at the end stays", "a\r\n", "a\r\n"},
        {"CR LF alone is a line", "\r\n", "\r\n"},
        {"CR LF between line feeds", "a\n\r\n\nb", "a\n\r\n\nb"},
        {"CR LF LF splits once", "a\r\n\nb", "a\r\n\nb"},
        {"CR CR LF does not split", "a\r\r\nb", "a\r\r\nb"},
        {"LF CR splits", "a\n\rb", "a\n\rb"},
        {"LF CR LF", "a\n\r\nb", "a\n\r\nb"},
        {"NUL is a character", "a\0b\n\0\n"s, "a\0b\n\0"s},
        {"other line ends are none", "a\vb\fc\u2028d\u0085e", "a\vb\fc\u2028d\u0085e"},
        {"invalid bytes are replaced", "caf\xE9\n\xFF\n", "caf\uFFFD\n\uFFFD"},
        {"a character broken by the line's end", "\xE2\x82\nx", "\uFFFD\nx"},
        {"an invalid byte parts CR and LF", "a\r\xFF\nb", "a\r\uFFFD\nb"},
        {"a byte order mark stays", "\xEF\xBB\xBFtext", "\xEF\xBB\xBFtext"},
        {"other scripts", "Überlänge\n東京\n🎬\n", "Überlänge\n東京\n🎬"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(errorTextOf(row.bytes), row.expected) << row.name;
}

TEST(ErrorText, CountsACarriageReturnLineFeedAsPartOfItsLine)
{
    std::string bytes;
    for (int line = 1; line <= 20; ++line)
        bytes += "line " + std::to_string(line) + "\r\n";
    EXPECT_EQ(errorTextOf(bytes), bytes) << "twenty such lines are one piece";
}

TEST(ErrorText, HandlesLargeOutput)
{
    std::string bytes;
    for (int line = 0; line < 50'000; ++line)
        bytes += "frame= " + std::to_string(line) + "\n";
    EXPECT_EQ(errorTextOf(bytes).substr(0, 13), "frame= 49992\n");
    EXPECT_EQ(errorTextOf(std::string(2'000'000, '\n')), "");
}

} // namespace stackreel
