// The program `ffprobe` in the resource directory: becomes the system's ffprobe, with the arguments as they
// are.
#include "platform/shim/Process.h"
#include "platform/shim/ToolSearch.h"

using namespace stackreel::shim;

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto tool = systemTool("ffprobe");
    if (!tool)
        return failMissing("ffprobe");
    return become(*tool, arguments);
}
