#include "framing/ExportRange.h"

#include "tests/framing/Generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace stackreel
{

TEST(ExportRange, IsClampedToTheSource)
{
    struct Row {
        double duration;
        double trimStart;
        double trimEnd;
        ExportRange expected;
    };
    const Row rows[] = {
        {10, 0, 10, {0, 10}},          {10, 2, 5, {2, 3}},
        {10, -3, 5, {0, 5}},           {10, -0.0, 5, {0, 5}},
        {10, 9.9, 9.95, {9.75, 0.25}}, {10, 3, 3, {3, 0.25}},
        {10, 5, 2, {5, 0.25}},         {10, 20, 30, {9.75, 0.25}},
        {10, 0, 99, {0, 10}},          {10, -5, -2, {0, 0.25}},
        {0.25, 0, 0.25, {0, 0.25}},    {0.1, 0, 0.1, {0, 0.25}},
        {0.1, 0.05, 0.1, {0, 0.25}},   {0, 0, 0, {0, 0.25}},
        {0, 5, 8, {0, 0.25}},          {-1, 0, 5, {0, 0.25}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ExportRange::within(row.duration, row.trimStart, row.trimEnd), row.expected)
            << row.duration << ": " << row.trimStart << " to " << row.trimEnd;
}

RC_GTEST_PROP(ExportRange, StartsInTheSourceAndIsNeverTooShort, ())
{
    const double duration =
        *rc::gen::suchThat(anyDouble(), [](double value) { return std::isfinite(value); });
    const ExportRange range = ExportRange::within(duration, *anyDouble(), *anyDouble());
    RC_ASSERT(range.start >= 0);
    RC_ASSERT(range.start <= std::max(duration - 0.25, 0.0));
    RC_ASSERT(range.length >= 0.25);
    RC_ASSERT(range.length <= std::max(duration, 0.25));
}

RC_GTEST_PROP(ExportRange, EndsInASourceThatIsLongEnough, ())
{
    const double duration = *ratioBetween(0.25, 1e6);
    const double trimStart = (*fraction() * 3 - 1) * duration;
    const double trimEnd = (*fraction() * 3 - 1) * duration;
    const ExportRange range = ExportRange::within(duration, trimStart, trimEnd);
    RC_ASSERT(range.start + range.length <= duration * (1 + 1e-15));
}

RC_GTEST_PROP(ExportRange, IsTheRequestedOneWhenThatFits, ())
{
    const double duration = *ratioBetween(1, 1e6);
    const double trimStart = *fraction() * (duration - 0.5);
    const double trimEnd = trimStart + 0.25 + *fraction() * (duration - trimStart - 0.25);
    RC_PRE(trimEnd <= duration);
    const ExportRange range = ExportRange::within(duration, trimStart, trimEnd);
    RC_ASSERT(range.start == trimStart);
    RC_ASSERT(std::abs(range.length - (trimEnd - trimStart)) <= 1e-9);
}

} // namespace stackreel
