#include "media/ProbeNumbers.h"

#include "tests/support/ScopedLocale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace stackreel
{

namespace
{

template <typename Number>
struct Row {
    std::string_view text;
    std::optional<Number> expected;
};

constexpr std::string_view nul("5\0", 2);

const Row<std::int64_t> integers[] = {
    {"0", 0},
    {"90", 90},
    {"+270", 270},
    {"-90", -90},
    {"-0", 0},
    {"0090", 90},
    {"000000000000000000000000000000000000090", 90},
    {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
    {"+9223372036854775807", std::numeric_limits<std::int64_t>::max()},
    {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
    {"9223372036854775808", std::nullopt},
    {"-9223372036854775809", std::nullopt},
    {"99999999999999999999999999999999", std::nullopt},
    {"", std::nullopt},
    {"+", std::nullopt},
    {"-", std::nullopt},
    {"+-90", std::nullopt},
    {"-+90", std::nullopt},
    {"++90", std::nullopt},
    {"--90", std::nullopt},
    {" 90", std::nullopt},
    {"90 ", std::nullopt},
    {"90\n", std::nullopt},
    {"9 0", std::nullopt},
    {"90.0", std::nullopt},
    {"90.", std::nullopt},
    {"1e2", std::nullopt},
    {"0x5A", std::nullopt},
    {"90°", std::nullopt},
    {"٩٠", std::nullopt},
    {"1,000", std::nullopt},
    {"ninety", std::nullopt},
    {nul, std::nullopt},
};

const Row<double> decimals[] = {
    {"12.5", 12.5},
    {"8.000000", 8.0},
    {"0", 0.0},
    {"+12.5", 12.5},
    {"-12.5", -12.5},
    {"007.25", 7.25},
    {".5", 0.5},
    {"5.", 5.0},
    {"1e3", 1000.0},
    {"1E3", 1000.0},
    {"1.5e-3", 0.0015},
    {"1.5e+3", 1500.0},
    {"0.1", 0.1},
    {"3.141592653589793", 3.141592653589793},
    {"1.7976931348623157e308", std::numeric_limits<double>::max()},
    {"12345678901234567890", 12345678901234567890.0},
    {"", std::nullopt},
    {"+", std::nullopt},
    {"-", std::nullopt},
    {".", std::nullopt},
    {"e5", std::nullopt},
    {"1e", std::nullopt},
    {"1e+", std::nullopt},
    {"1.5.2", std::nullopt},
    {"+-1", std::nullopt},
    {"-+1", std::nullopt},
    {"++1", std::nullopt},
    {" 12.5", std::nullopt},
    {"12.5 ", std::nullopt},
    {"12.5\n", std::nullopt},
    {"1 2", std::nullopt},
    {"12,5", std::nullopt},
    {"1,234.5", std::nullopt},
    {"N/A", std::nullopt},
    {"inf", std::nullopt},
    {"infinity", std::nullopt},
    {"-inf", std::nullopt},
    {"nan", std::nullopt},
    {"0x10", std::nullopt},
    {"0x1p3", std::nullopt},
    {"1e999", std::nullopt},
    {"-1e999", std::nullopt},
    {"1e-999", std::nullopt},
    {"12.5s", std::nullopt},
    {"00:00:12.5", std::nullopt},
    {nul, std::nullopt},
};

void expectAllRows()
{
    for (const auto& row : integers)
        EXPECT_EQ(parseInteger(row.text), row.expected) << '"' << row.text << '"';
    for (const auto& row : decimals)
        EXPECT_EQ(parseDecimal(row.text), row.expected) << '"' << row.text << '"';
}

} // namespace

TEST(ProbeNumbers, AreParsedByTheirRules)
{
    expectAllRows();
}

TEST(ProbeNumbers, AreParsedAlikeWhenTheDecimalPointIsAComma)
{
    const ScopedCommaLocale locale;
    expectAllRows();
}

TEST(ProbeNumbers, CanBeVeryLong)
{
    EXPECT_EQ(parseDecimal("0." + std::string(100'000, '0') + "1"), std::nullopt);
    EXPECT_EQ(parseDecimal("12.5" + std::string(100'000, '0')), 12.5);
    EXPECT_EQ(parseInteger(std::string(100'000, '9')), std::nullopt);
    EXPECT_EQ(parseInteger(std::string(100'000, '0') + "7"), 7);
}

} // namespace stackreel
