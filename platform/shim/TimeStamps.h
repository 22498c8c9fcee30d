#pragma once

#include <string>
#include <vector>

namespace stackreel::shim
{

/// The arguments of one output with `setpts=PTS-STARTPTS` in its filter graph (`-filter_complex`) replaced by
/// a bitstream filter behind the encoder, which does the same. The output's duration (`-t` behind the last
/// `-i`) becomes a `trim` in the graph and an `atrim` behind the audio filters (`-af`), as it has to be
/// counted from the first picture and the first sound, and a key frame is forced a third of a second before
/// the end. Without such a graph nothing changes.
std::vector<std::string> withTimeStampsResetAfterEncoding(std::vector<std::string> arguments);

} // namespace stackreel::shim
