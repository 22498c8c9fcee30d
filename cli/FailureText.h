#pragma once

#include "media/MediaToolError.h"

#include <string>

namespace stackreel
{

/// The message for the user of the command line. For a tool that failed it is a sentence that says what
/// happened and, where that is known, what to do, followed by the tool's last lines without its progress.
/// Pure.
std::string failureText(const MediaToolError& error);

} // namespace stackreel
