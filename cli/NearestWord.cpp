#include "cli/NearestWord.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>

namespace stackreel
{

namespace
{

std::size_t editDistance(std::string_view from, std::string_view to)
{
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

std::optional<std::string> nearestWord(std::string_view mistyped, std::span<const std::string> words)
{
    std::optional<std::string> nearest;
    std::size_t least = 0;
    for (const std::string& word : words) {
        // A mistyped word that is twice as long cannot be near, and comparing a very long one would be slow.
        if (mistyped.size() > 2 * word.size())
            continue;
        const std::size_t distance = editDistance(mistyped, word);
        if (3 * distance > word.size() || (nearest && distance >= least))
            continue;
        nearest = word;
        least = distance;
    }
    return nearest;
}

} // namespace stackreel
