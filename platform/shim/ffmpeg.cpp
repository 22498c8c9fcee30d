// The program `ffmpeg` in the resource directory: the system's FFmpeg, made able to encode H.264 where it has
// no VideoToolbox. It looks at its arguments, changes them where they ask for that encoder, and becomes the
// system's FFmpeg; process id, output, exit status and signals are from then on FFmpeg's own.
#include "platform/shim/Arguments.h"
#include "platform/shim/Process.h"
#include "platform/shim/ToolSearch.h"

using namespace stackreel::shim;

int main(int argc, char** argv)
{
    const Arguments arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto tool = systemTool("ffmpeg");
    if (!tool)
        return failMissing("ffmpeg");
    if (!asksForVideoToolbox(arguments))
        return become(*tool, arguments);
    const auto listing = outputOf(*tool, {"-hide_banner", "-encoders"});
    if (!listing)
        return fail(cannotEncodeStatus, *tool + " could not be asked for its encoders.");
    const auto encoder = preferredEncoder(*listing);
    if (!encoder)
        return fail(cannotEncodeStatus, *tool + " has no H.264 encoder: it needs libx264 or libopenh264.");
    return become(*tool, withEncoder(arguments, *encoder));
}
