// The program `ffmpeg` in the resource directory. If its arguments request VideoToolbox and the system's
// FFmpeg does not have it, it changes them to request another H.264 encoder and pictures in BT.709. It then
// replaces itself by the system's FFmpeg (`execv`), so the process id, output, exit status and signals are
// those of FFmpeg.
#include "ffmpeg-shim/Changes.h"
#include "ffmpeg-shim/ExportColours.h"
#include "ffmpeg-shim/Process.h"
#include "ffmpeg-shim/ToolSearch.h"

#include <cstdlib>
#include <utility>

using namespace stackreel::shim;

namespace
{

ChangedArguments changedFor(H264Encoder encoder, const Arguments& requested, const std::string& ffmpeg)
{
    const char* recipe = std::getenv("STACKREEL_RECIPE");
    Arguments changed = withComment(withEncoder(requested, encoder), recipe != nullptr ? recipe : "");
    std::vector<Change> changes = changesBetween(requested, changed, encoder);
    if (encoder == H264Encoder::videoToolbox)
        return {std::move(changed), std::move(changes)};
    ChangedArguments coloured = withExportColours(std::move(changed), ffmpeg);
    coloured.changes.insert(coloured.changes.begin(), changes.begin(), changes.end());
    return coloured;
}

} // namespace

int main(int argc, char** argv)
{
    const Arguments arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto tool = systemTool("ffmpeg");
    if (!tool)
        return failMissing("ffmpeg");
    if (!requestsVideoToolbox(arguments))
        return execProgram(*tool, arguments);
    const auto listing = outputOf(*tool, {"-hide_banner", "-encoders"});
    if (!listing)
        return fail(cannotEncodeStatus, *tool + " could not be asked for its encoders.");
    const auto encoder = preferredEncoder(*listing);
    if (!encoder)
        return fail(cannotEncodeStatus, *tool + " has no H.264 encoder: it needs libx264 or libopenh264.");
    const ChangedArguments changed = changedFor(*encoder, arguments, *tool);
    for (const Change& change : changed.changes)
        report(change);
    return execProgram(*tool, changed.arguments);
}
