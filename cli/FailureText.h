#pragma once

#include "media/MediaToolError.h"

#include <string>

namespace stackreel
{

/// What the user of the command line reads about a failure of the media tools.
struct FailureText {
    /// What happened and, where that is known, what to do.
    std::string sentence;
    /// The last lines of a tool that failed, without its progress and the changes that the front reports; may
    /// be empty.
    std::string toolLines;

    /// Pure.
    static FailureText of(const MediaToolError& error);
};

} // namespace stackreel
