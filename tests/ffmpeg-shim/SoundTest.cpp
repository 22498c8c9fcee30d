#include "tests/ffmpeg-shim/Invocation.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <numeric>
#include <sstream>

namespace stackreel::shim
{

namespace
{

/// Runs one of the programs under test, which runs the system's FFmpeg, and returns its output. The test
/// fails if the program fails.
std::string tool(const std::string& name, const std::vector<std::string>& arguments)
{
    const Outcome outcome = run({shimProgram(name), arguments, {}});
    EXPECT_EQ(outcome.exitStatus(), 0) << testing::PrintToString(arguments) << '\n' << outcome.errors;
    return outcome.output;
}

/// The words of a text, which are separated by blanks.
std::vector<std::string> words(const std::string& text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

/// An FFmpeg audio source with a tone on each channel, whose amplitude is 1, 2, 3… times that of the first
/// channel. The tone is low enough for a low-frequency channel.
std::string tones(int channels, const std::string& layout)
{
    std::ostringstream source;
    source << "aevalsrc=";
    for (int channel = 0; channel < channels; ++channel)
        source << (channel > 0 ? "|" : "") << 0.05 * (channel + 1) << "*sin(2*PI*60*t)";
    source << ":d=0.6:s=48000:c=" << layout;
    return source.str();
}

/// A tiny clip with that audio source. The suffix of the name and the encoder determine how the file stores
/// the channel layout.
std::filesystem::path clip(const TemporaryDirectory& folder, const std::string& name,
                           const std::string& source, const std::string& encoder)
{
    const std::filesystem::path file = folder / name;
    tool("ffmpeg", {"-v", "error", "-y", "-f", "lavfi", "-i", "color=s=64x36:r=10:d=0.6", "-f", "lavfi", "-i",
                    source, "-c:v", "mpeg4", "-c:a", encoder, "-b:a", "768k", file.string()});
    return file;
}

/// Exports the clip with the arguments of the product.
std::filesystem::path exported(const TemporaryDirectory& folder, const std::filesystem::path& source)
{
    const std::filesystem::path file = folder / "exported.mp4";
    std::vector<std::string> arguments = words("-hide_banner -y -ss 0.000 -i");
    arguments.push_back(source.string());
    std::ranges::copy(words("-t 0.600 -filter_complex [0:v:0]format=yuv420p[video] -map [video] -map 0:a:0 "
                            "-c:v h264_videotoolbox -allow_sw 1 -b:v 12M -movflags +faststart "
                            "-af asetpts=PTS-STARTPTS -c:a aac -b:a 192k -metadata:s:v:0 rotate=0"),
                      std::back_inserter(arguments));
    arguments.push_back(file.string());
    tool("ffmpeg", arguments);
    return file;
}

/// The number of channels and the channel layout that the file states: "6,5.1".
std::string layoutOf(const std::filesystem::path& file)
{
    const std::string text =
        tool("ffprobe", {"-v", "error", "-select_streams", "a:0", "-show_entries",
                         "stream=channels,channel_layout", "-of", "csv=p=0", file.string()});
    return text.substr(0, text.find('\n'));
}

/// The loudness of each channel as a fraction of the sum of all.
std::vector<double> shares(const std::filesystem::path& file, std::size_t channels)
{
    const std::string bytes = tool("ffmpeg", {"-v", "error", "-i", file.string(), "-map", "0:a:0", "-f",
                                              "f32le", "-c:a", "pcm_f32le", "-"});
    std::vector<float> samples(bytes.size() / sizeof(float));
    std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(float));
    std::vector<double> loudness(channels, 0.0);
    for (std::size_t index = 0; index < samples.size(); ++index)
        loudness[index % channels] += std::pow(static_cast<double>(samples[index]), 2);
    for (double& value : loudness)
        value = std::sqrt(value);
    const double all = std::accumulate(loudness.begin(), loudness.end(), 0.0);
    for (double& value : loudness)
        value /= all;
    return loudness;
}

struct Row {
    int channels;
    /// The channel layout of the source.
    std::string layout;
    std::string file;
    std::string encoder;
    /// The number of channels and the layout that ffprobe reports for the source, and those expected for the
    /// export.
    std::string stated;
    std::string expected;
};

const Row rows[] = {
    {1, "mono", "clip.mov", "pcm_s16le", "1,mono", "1,mono"},
    {2, "stereo", "clip.mov", "pcm_s16le", "2,stereo", "2,stereo"},
    {3, "2.1", "clip.mkv", "flac", "3,2.1", "3,2.1"},
    {5, "5.0(side)", "clip.mkv", "flac", "5,5.0(side)", "5,5.0"},
    {6, "5.1", "clip.mp4", "aac", "6,5.1", "6,5.1"},
    {6, "5.1(side)", "clip.mkv", "ac3", "6,5.1(side)", "6,5.1"},
    {7, "6.1", "clip.mkv", "flac", "7,6.1", "7,unknown"},
    {8, "7.1", "clip.mkv", "flac", "8,7.1", "8,7.1"},
    {16, "hexadecagonal", "clip.mov", "pcm_s16le", "16,hexadecagonal", "16,unknown"},
    // AAC that lists its channels instead of naming a layout: FFmpeg decodes it without a layout.
    {4, "3.1", "clip.mp4", "aac", "4,unknown", "4,4.0"},
    {6, "5.1(side)", "clip.mp4", "aac", "6,unknown", "6,5.1"},
    {8, "7.1(wide)", "clip.mp4", "aac", "8,unknown", "8,7.1"},
    {16, "hexadecagonal", "clip.mp4", "aac", "16,unknown", "16,unknown"},
};

} // namespace

TEST(ShimSound, EveryNumberAndLayoutOfChannelsIsExportedInItsOrder)
{
    for (const Row& row : rows) {
        SCOPED_TRACE(row.layout + " as " + row.encoder);
        const TemporaryDirectory folder;
        const auto source = clip(folder, row.file, tones(row.channels, row.layout), row.encoder);
        ASSERT_EQ(layoutOf(source), row.stated);
        const auto output = exported(folder, source);
        ASSERT_EQ(layoutOf(output), row.expected);
        const std::size_t channels = static_cast<std::size_t>(row.channels);
        const auto found = shares(output, channels);
        const double steps = static_cast<double>(channels * (channels + 1) / 2);
        for (std::size_t channel = 0; channel < channels; ++channel)
            EXPECT_NEAR(found[channel] * steps, static_cast<double>(channel + 1), 0.45)
                << "channel " << channel;
    }
}

} // namespace stackreel::shim
