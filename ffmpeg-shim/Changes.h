#pragma once

#include "ffmpeg-shim/Arguments.h"

#include <string>
#include <string_view>
#include <vector>

namespace stackreel::shim
{

/// The value of a change that should have been made and was not.
inline constexpr std::string_view unconverted = "unconverted";

/// Something that the front does differently from what its arguments say, or that it cannot do.
struct Change {
    std::string_view name;   ///< what is changed: small letters and dashes
    std::string_view value;  ///< what it becomes; without ": " and line breaks
    std::string_view reason; ///< why, as a part of a sentence; without line breaks

    /// The line by which it is reported: "[stackreel] encoder=libx264: this FFmpeg has no h264_videotoolbox".
    std::string line() const;
    /// The sentence for a user if the value is `unconverted`; empty otherwise.
    std::string warning() const;

    bool operator==(const Change&) const = default;
};

/// Changed arguments, and what is different in them.
struct ChangedArguments {
    Arguments arguments;
    std::vector<Change> changes;
};

/// The changes that `withEncoder` and `withComment` have made to the arguments of an export, the encoder
/// first. Pure.
std::vector<Change> changesBetween(const Arguments& requested, const Arguments& changed, H264Encoder encoder);

/// Writes the change to standard error if the program that started this one requests that: if the variable
/// STACKREEL_REPORT_CHANGES is set. Otherwise writes only its warning, if it has one, because error messages
/// would end with these lines.
void report(const Change& change);

} // namespace stackreel::shim
