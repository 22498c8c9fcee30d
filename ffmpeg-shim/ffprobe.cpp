// The program `ffprobe` in the resource directory. It replaces itself by the system's ffprobe (`execv`) with
// the same arguments.
#include "ffmpeg-shim/Process.h"
#include "ffmpeg-shim/ToolSearch.h"

using namespace stackreel::shim;

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto tool = systemTool("ffprobe");
    if (!tool)
        return failMissing("ffprobe");
    return execProgram(*tool, arguments);
}
