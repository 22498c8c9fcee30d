#include "tests/ffmpeg-shim/InterlacedClip.h"

#include "tests/ffmpeg-shim/Invocation.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace stackreel::shim
{

ClipSize sizeOf(Fields fields)
{
    return fields == Fields::dv ? ClipSize{720, 576} : ClipSize{320, 180};
}

std::filesystem::path interlacedClip(const std::filesystem::path& folder, Fields fields)
{
    const bool isDv = fields == Fields::dv;
    const bool bottomFirst = isDv || fields == Fields::bottomFirst;
    const auto [width, height] = sizeOf(fields);
    const std::string source = "nullsrc=size=" + std::to_string(width) + "x" + std::to_string(height) +
                               (isDv ? ":rate=50:duration=0.4" : ":rate=20:duration=1") +
                               ",format=gray,geq=lum='235*mod(floor((X+16*N)/40),2)'";
    const std::string filters = std::string("format=yuv420p,tinterlace=") +
                                (bottomFirst ? "interleave_bottom" : "interleave_top") + ",setfield=" +
                                (fields == Fields::unmarked ? "prog"
                                 : bottomFirst              ? "bff"
                                                            : "tff");
    std::vector<std::string> arguments{"-v", "error", "-y", "-f", "lavfi", "-i", source, "-vf", filters};
    if (isDv)
        arguments.insert(arguments.end(), {"-c:v", "dvvideo"});
    else
        arguments.insert(arguments.end(), {"-c:v", "libx264", "-qp", "4"});
    if (fields == Fields::topFirst || fields == Fields::bottomFirst)
        arguments.insert(arguments.end(), {"-flags", "+ildct+ilme"});
    const std::filesystem::path file =
        folder / ("fields " + std::to_string(static_cast<int>(fields)) + (isDv ? ".avi" : ".mp4"));
    arguments.push_back(file.string());
    const Outcome outcome = run({shimProgram("ffmpeg"), arguments, {}});
    EXPECT_EQ(outcome.exitStatus(), 0) << outcome.errors;
    return file;
}

double roughness(std::string_view luma, std::size_t width)
{
    double sum = 0;
    for (std::size_t index = width; index < luma.size(); ++index)
        sum += std::abs(static_cast<unsigned char>(luma[index]) -
                        static_cast<unsigned char>(luma[index - width]));
    return sum / static_cast<double>(luma.size() - width);
}

} // namespace stackreel::shim
