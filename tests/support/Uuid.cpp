#include "tests/support/Uuid.h"

#include <string_view>

namespace stackreel
{

namespace
{

/// The characters that a UUID may have at a position.
std::string_view allowedAt(std::size_t position)
{
    switch (position) {
    case 8:
    case 13:
    case 18:
    case 23:
        return "-";
    case 14:
        return "4";
    case 19:
        return "89AB";
    default:
        return "0123456789ABCDEF";
    }
}

} // namespace

bool isUpperCaseUuid(const std::string& text)
{
    if (text.size() != 36)
        return false;
    for (std::size_t position = 0; position < text.size(); ++position)
        if (allowedAt(position).find(text[position]) == std::string_view::npos)
            return false;
    return true;
}

} // namespace stackreel
