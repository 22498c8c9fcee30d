#include "media/ProcessOutput.h"

#include "media/Utf8.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace stackreel
{

namespace
{

constexpr std::size_t maxLines = 8;

bool endsLine(std::string_view text, std::size_t index)
{
    return text[index] == '\n' && (index == 0 || text[index - 1] != '\r');
}

std::vector<std::string_view> nonEmptyLines(std::string_view text)
{
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    for (std::size_t index = 0; index <= text.size(); ++index) {
        if (index < text.size() && !endsLine(text, index))
            continue;
        if (index > start)
            lines.push_back(text.substr(start, index - start));
        start = index + 1;
    }
    return lines;
}

} // namespace

std::string ProcessOutput::errorText() const
{
    const std::string text = replacingInvalidUtf8(standardError);
    const auto lines = nonEmptyLines(text);
    const std::size_t first = lines.size() > maxLines ? lines.size() - maxLines : 0;
    std::string joined;
    for (std::size_t index = first; index < lines.size(); ++index) {
        if (index > first)
            joined += '\n';
        joined += lines[index];
    }
    return joined;
}

} // namespace stackreel
