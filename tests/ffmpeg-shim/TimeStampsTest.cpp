#include "ffmpeg-shim/TimeStamps.h"

#include <gtest/gtest.h>

namespace stackreel::shim
{

namespace
{

using Arguments = std::vector<std::string>;

const std::string reset = "[0:v:0]scale=8:8,setpts=PTS-STARTPTS[video]";
const std::string trimmed = "[0:v:0]scale=8:8,trim=duration=1.500[video]";
const std::string filter = "setts=pts=PTS-STARTPTS:dts=DTS-STARTPTS";

} // namespace

TEST(TimeStamps, AreResetBehindTheEncoder)
{
    const struct {
        const char* description;
        Arguments before, after;
    } rows[] = {
        {"without sound",
         {"-i", "in", "-t", "1.500", "-filter_complex", reset, "-an", "out"},
         {"-i", "in", "-filter_complex", trimmed, "-bsf:v", filter, "-force_key_frames", "1.150", "-an",
          "out"}},
        {"with sound",
         {"-i", "in", "-t", "1.500", "-filter_complex", reset, "-af", "volume=2", "out"},
         {"-i", "in", "-filter_complex", trimmed, "-bsf:v", filter, "-force_key_frames", "1.150", "-af",
          "volume=2,atrim=duration=1.500", "out"}},
        {"with an empty audio filter",
         {"-i", "in", "-filter_complex", reset, "-af", "", "-t", "1.500", "out"},
         {"-i", "in", "-filter_complex", trimmed, "-bsf:v", filter, "-force_key_frames", "1.150", "-af",
          "atrim=duration=1.500", "out"}},
        {"with sound and no audio filter",
         {"-i", "in", "-t", "1.500", "-filter_complex", reset, "out"},
         {"-i", "in", "-t", "1.500", "-filter_complex", "[0:v:0]scale=8:8[video]", "-bsf:v", filter, "out"}},
        {"without a duration",
         {"-i", "in", "-filter_complex", reset, "-an", "out"},
         {"-i", "in", "-filter_complex", "[0:v:0]scale=8:8[video]", "-bsf:v", filter, "-an", "out"}},
        {"with a duration of the input and file names that look like options",
         {"-t", "9", "-i", "-t", "-t", "1.500", "-filter_complex", reset, "-an", "out"},
         {"-t", "9", "-i", "-t", "-filter_complex", trimmed, "-bsf:v", filter, "-force_key_frames", "1.150",
          "-an", "out"}},
        {"with a duration too short for a second key frame",
         {"-i", "in", "-t", "0.500", "-filter_complex", "scale=8:8,setpts=PTS-STARTPTS", "-an", "out"},
         {"-i", "in", "-filter_complex", "scale=8:8,trim=duration=0.500", "-bsf:v", filter, "-an", "out"}},
        {"without a reset",
         {"-i", reset, "-t", "1.500", "-filter_complex", trimmed, "-an", "out"},
         {"-i", reset, "-t", "1.500", "-filter_complex", trimmed, "-an", "out"}},
        {"without a graph", {"-i", "in", "-t", "1.500", "-an"}, {"-i", "in", "-t", "1.500", "-an"}},
        {"cut off", {"-an", "-filter_complex"}, {"-an", "-filter_complex"}},
        {"nothing", {}, {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(withTimeStampsResetAfterEncoding(row.before), row.after) << row.description;
}

} // namespace stackreel::shim
