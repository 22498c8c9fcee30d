#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>

namespace stackreel
{

/// A version number, compared part by part from the left. Missing parts are zero: 1.2 equals 1.2.0.
struct UpdateVersion {
    std::array<std::uint32_t, 4> numbers{};

    /// Parses one to four numbers separated by full stops. Each has at most nine digits and no leading zero,
    /// except for 0 itself. None for any other text.
    static std::optional<UpdateVersion> parse(std::string_view text);

    auto operator<=>(const UpdateVersion&) const = default;
};

} // namespace stackreel
