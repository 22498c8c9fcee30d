#pragma once

#include <string>
#include <vector>

namespace stackreel::shim
{

/// Changes the arguments of a command with one output whose filter graph (`-filter_complex`) contains
/// `setpts=PTS-STARTPTS`; returns any others unchanged:
/// - A bitstream filter after the encoder, which also makes the time stamps start at 0, replaces `setpts`.
/// - A `trim` filter in the graph and an `atrim` filter after the audio filters (`-af`) replace the output's
///   duration (`-t` after the last `-i`), because it has to be counted from the first picture and the first
///   audio sample.
/// - A key frame is forced a third of a second before the end.
std::vector<std::string> withTimeStampsResetAfterEncoding(std::vector<std::string> arguments);

} // namespace stackreel::shim
