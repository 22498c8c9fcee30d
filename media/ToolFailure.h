#pragma once

#include "media/MediaToolError.h"
#include "media/ProcessOutput.h"

#include <string>

namespace stackreel
{

/// Throws the error for a run that ended with a status other than 0; `tool` is the display name, "FFmpeg" or
/// "ffprobe".
///
/// It is `MediaToolError` (process failed). Its message is the last lines of standard error; for a tool that
/// was ended by a signal, a sentence that says so and what to do, followed by these lines only if the tool
/// crashed. It is `MediaToolError` (tool missing) when the program in the resource directory says so of the
/// system's tool. It is `TemporaryFolderFull` when there are no lines because there was no room for them.
[[noreturn]] void throwToolFailure(const std::string& tool, const ProcessOutput& output);

/// Whether the message says that a signal ended the tool.
bool namesSignal(const MediaToolError::ProcessFailed& failure);

} // namespace stackreel
