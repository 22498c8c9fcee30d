#include "tests/support/ChildReport.h"

namespace stackreel
{

std::filesystem::path testChild()
{
    return STACKREEL_TEST_CHILD;
}

std::vector<std::string> pieces(std::string_view text, char mark)
{
    std::vector<std::string> pieces;
    for (std::size_t end = text.find(mark); end != std::string_view::npos; end = text.find(mark)) {
        pieces.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    return pieces;
}

std::map<std::string, std::string> keysAndValues(std::string_view text)
{
    std::map<std::string, std::string> values;
    for (const std::string& line : pieces(text, '\n'))
        if (const std::size_t colon = line.find(':'); colon != std::string::npos)
            values[line.substr(0, colon)] = line.substr(line.find_first_not_of(" \t", colon + 1));
    return values;
}

} // namespace stackreel
