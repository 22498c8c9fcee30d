#pragma once

#include <gtest/gtest.h>

#include <vector>

namespace stackreel
{

/// Whether the numbers count up from `first` to `last`, again and again.
inline testing::AssertionResult repeats(const std::vector<int>& numbers, int first, int last)
{
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        const int expected = numbers[i - 1] == last ? first : numbers[i - 1] + 1;
        if (numbers[i] != expected)
            return testing::AssertionFailure() << numbers[i] << " follows " << numbers[i - 1];
    }
    return testing::AssertionSuccess();
}

} // namespace stackreel
