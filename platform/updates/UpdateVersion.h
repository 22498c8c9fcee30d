#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>

namespace stackreel
{

/// A version as numbers, compared one by one from the left. Missing ones are zero: 1.2 equals 1.2.0.
struct UpdateVersion {
    std::array<std::uint32_t, 4> numbers{};

    /// One to four numbers with a full stop between them, each of at most nine digits and, beyond a single
    /// zero, without leading zeros; none for anything else.
    static std::optional<UpdateVersion> parse(std::string_view text);

    auto operator<=>(const UpdateVersion&) const = default;
};

} // namespace stackreel
