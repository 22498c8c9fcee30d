#include "tests/integration/Clips.h"

#include "media/ProcessRunner.h"
#include "media/ToolLocator.h"
#include "tests/support/Awaited.h"
#include "tests/support/TemporaryDirectory.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <map>
#include <stdexcept>

namespace stackreel
{

namespace
{

/// The filter that rotates the stored frames in the opposite direction, so that a player that applies the
/// rotation tag shows them upright.
std::string inverseRotationFilter(int rotation)
{
    switch (rotation) {
    case 90:
        return ",transpose=clock";
    case 180:
        return ",hflip,vflip";
    case 270:
        return ",transpose=cclock";
    default:
        return "";
    }
}

std::string sourceFilter(const ClipRecipe& recipe)
{
    const std::string size = std::to_string(recipe.width) + "x" + std::to_string(recipe.height);
    const std::string timing = ":rate=" + recipe.rate + ":duration=" + std::to_string(recipe.seconds);
    if (recipe.numbered)
        return "color=black:size=" + size + timing + ",geq=lum='16+mod(N\\,44)*5':cb=128:cr=128";
    // The source itself rounds an odd size down.
    const std::string exact = std::to_string(recipe.width) + ":" + std::to_string(recipe.height);
    return "testsrc2=size=" + size + timing + ",format=yuv444p,scale=" + exact;
}

/// A 32-bit number in the byte order of MOV files.
std::string bigEndian(std::uint32_t number)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<char>(number >> shift & 0xFFU));
    return bytes;
}

/// Writes a rotation into the display matrix of the first track. The file is changed directly because
/// FFmpeg's options for that differ between its versions.
void writeRotation(const std::filesystem::path& file, int rotation)
{
    constexpr std::uint32_t one = 0x10000;
    constexpr std::uint32_t minusOne = 0xFFFF0000;
    const std::map<int, std::array<std::uint32_t, 5>> matrices = {{90, {0, minusOne, 0, one, 0}},
                                                                  {180, {minusOne, 0, 0, 0, minusOne}},
                                                                  {270, {0, one, 0, minusOne, 0}}};
    // The distance from the name of the track's header ("tkhd") to the matrix, in bytes.
    constexpr std::streamoff distance = 44;
    const std::size_t header = contentOf(file).find("tkhd");
    if (header == std::string::npos)
        throw std::runtime_error("no track in " + file.string());
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    stream.seekp(static_cast<std::streamoff>(header) + distance);
    for (const std::uint32_t element : matrices.at(rotation))
        stream << bigEndian(element);
}

} // namespace

ProcessOutput runFFmpeg(const std::vector<std::string>& arguments)
{
    std::vector<std::string> words = {"-hide_banner", "-loglevel", "error", "-nostdin", "-y"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    ProcessOutput output = runToEnd(ProcessRunner::run(ToolLocator::locate(MediaTool::ffmpeg), words));
    if (output.status != 0)
        throw std::runtime_error(output.errorText());
    return output;
}

void makeClip(const std::filesystem::path& file, const ClipRecipe& recipe)
{
    std::vector<std::string> words = {"-f", "lavfi", "-i",
                                      sourceFilter(recipe) + inverseRotationFilter(recipe.rotation) +
                                          ",setsar=" + recipe.sampleAspect};
    if (recipe.audio)
        for (const std::string& word :
             {std::string("-f"), std::string("lavfi"), std::string("-i"),
              "sine=frequency=440:sample_rate=48000:duration=" + std::to_string(recipe.seconds)})
            words.push_back(word);
    for (const char* word : {"-c:v", "libx264", "-preset", "ultrafast", "-qp", "10", "-pix_fmt", "yuv420p"})
        words.emplace_back(word);
    // Odd sizes cannot be encoded with 4:2:0 chroma.
    if (recipe.width % 2 != 0 || recipe.height % 2 != 0)
        words.back() = "yuv444p";
    words.emplace_back("-vf");
    words.emplace_back("setparams=range=tv:color_primaries=bt709:color_trc=bt709:colorspace=bt709");
    words.push_back(file.string());
    runFFmpeg(words);
    if (recipe.rotation != 0)
        writeRotation(file, recipe.rotation);
}

} // namespace stackreel
