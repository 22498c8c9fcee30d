// Exports by every FFmpeg that is found, and compares each picture with that of the source.
#include "tests/ffmpeg-shim/InstalledFFmpegs.h"
#include "tests/ffmpeg-shim/Invocation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <iterator>
#include <sstream>

namespace stackreel::shim
{

namespace
{

std::vector<std::string> words(const std::string& text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

/// A source, the range of it that is exported, and the expected properties of the result.
struct Row {
    const char* name; ///< of the clip's file; its suffix selects the format
    const char* rate;
    const char* filters;    ///< that make the source's pictures
    const char* options;    ///< of the source's encoder
    int halfHeight;         ///< of the output, in pixels
    const char* start;      ///< of the range, seconds
    const char* length;     ///< of the range, seconds
    int level;              ///< the H.264 level that x264 writes, times ten
    double megabitsAtLeast; ///< limits of the bit rate; FFmpeg 5.1's is in the middle
    double megabitsAtMost;
};

const char* const x264 = "-c:v libx264 -preset ultrafast -qp 12 -pix_fmt yuv420p";
const char* const mpeg4 = "-c:v mpeg4 -q:v 2";
const char* const some = "select='not(mod(n,7))+not(mod(n,5))+between(n,20,30)'";
const char* const jittered = "settb=1/90000,setpts='(N/30+0.011*mod(N*7,3))/TB'";

const Row rows[] = {
    {"25.mp4", "25", "null", x264, 960, "0.000", "0.800", 40, 11, 14},
    {"60.mp4", "60", "null", x264, 960, "0.250", "0.400", 42, 11, 15},
    {"film.mkv", "24000/1001", "null", x264, 960, "0.000", "0.800", 40, 11, 14},
    {"ntsc.avi", "30000/1001", "null", mpeg4, 960, "0.000", "0.700", 40, 11, 14},
    {"pal.ts", "50", "null", x264, 960, "0.000", "0.400", 42, 11, 14},
    {"variable.mp4", "60", some, x264, 960, "0.000", "0.900", 42, 9, 14},
    {"variable.mkv", "60", some, x264, 960, "0.000", "0.900", 42, 9, 14},
    {"jittered.mp4", "30", jittered, x264, 960, "0.000", "0.680", 40, 11, 15},
    {"odd halves.mp4", "30", "null", x264, 675, "0.000", "0.700", 40, 10, 14},
};

class ExportedPicturesTest : public testing::Test
{
protected:
    /// Runs one of the system's programs through this project's one, and returns its output and its log.
    std::string system(const std::string& name, const std::vector<std::string>& arguments) const
    {
        const Outcome outcome = run({shimProgram(name), arguments, {}});
        EXPECT_EQ(outcome.exitStatus(), 0) << testing::PrintToString(arguments) << '\n' << outcome.errors;
        return outcome.output + outcome.errors;
    }

    std::filesystem::path source(const Row& row) const
    {
        const std::filesystem::path file = m_folder / row.name;
        if (std::filesystem::exists(file))
            return file;
        std::vector<std::string> arguments = words("-v error -y -f lavfi -i");
        arguments.push_back("testsrc2=size=1280x720:duration=1.2:rate=" + std::string(row.rate));
        std::ranges::copy(std::vector<std::string>{"-vf", row.filters, "-fps_mode", "passthrough"},
                          std::back_inserter(arguments));
        if (row.filters == jittered)
            std::ranges::copy(words("-enc_time_base 1:90000"), std::back_inserter(arguments));
        std::ranges::copy(words(row.options), std::back_inserter(arguments));
        arguments.push_back(file.string());
        system("ffmpeg", arguments);
        return file;
    }

    /// The times of all pictures in seconds, relative to the first one.
    std::vector<double> times(const std::filesystem::path& file) const
    {
        std::vector<double> result;
        for (const std::string& word :
             words(system("ffprobe", {"-v", "error", "-select_streams", "v:0", "-show_entries",
                                      "frame=pts_time", "-of", "csv=p=0", file.string()})))
            result.push_back(std::stod(word));
        const double first = result.empty() ? 0 : result.front();
        for (double& time : result)
            time -= first;
        return result;
    }

    double number(const std::filesystem::path& file, const std::string& entry) const
    {
        return std::stod(system("ffprobe", {"-v", "error", "-select_streams", "v:0", "-show_entries",
                                            "stream=" + entry, "-of", "csv=p=0", file.string()}));
    }

    Outcome exported(const InstalledFFmpeg& ffmpeg, const Row& row) const
    {
        std::vector<std::string> arguments{"-hide_banner", "-y", "-ss", row.start, "-i", source(row)};
        std::ranges::copy(std::vector<std::string>{"-t", row.length, "-filter_complex", graph(row)},
                          std::back_inserter(arguments));
        std::ranges::copy(
            words("-map [video] -c:v h264_videotoolbox -allow_sw 1 -b:v 12M -movflags +faststart "
                  "-an -metadata:s:v:0 rotate=0"),
            std::back_inserter(arguments));
        arguments.push_back(m_result.string());
        return run({shimProgram("ffmpeg"), arguments, {{"PATH", ffmpeg.path}}});
    }

    static std::string graph(const Row& row)
    {
        const auto half = [&](const std::string& name, const std::string& crop) {
            return "[" + name + "Source]crop=" + crop + ",scale=1080:" + std::to_string(row.halfHeight) +
                   ":flags=bicubic,setsar=1,setpts=PTS-STARTPTS[" + name + "]";
        };
        return "[0:v:0]split=2[topSource][bottomSource];" + half("top", "w=582:h=516:x=50:y=100") + ";" +
               half("bottom", "w=582:h=516:x=644:y=100") +
               ";[top][bottom]vstack=inputs=2,format=yuv420p[video]";
    }

    /// The lowest structural similarity (SSIM) of a picture of the result and the same picture of the source.
    double leastSimilarity(const Row& row) const
    {
        const int height = row.halfHeight;
        const std::string size = "scale=1080:" + std::to_string(height) + ":flags=bicubic,format=yuv444p";
        const std::string comparison =
            "[0:v]settb=1/25,setpts=N,format=yuv444p[shown];[1:v]settb=1/25,setpts=N,split[a][b];"
            "[a]crop=582:516:50:100," +
            size + "[t];[b]crop=582:516:644:100," + size +
            "[u];[t][u]vstack[wanted];[shown][wanted]ssim=shortest=1:stats_file=-";
        const std::string text =
            system("ffmpeg", {"-v", "error", "-i", m_result, "-ss", row.start, "-i", source(row),
                              "-filter_complex", comparison, "-f", "null", "-"});
        double least = 1;
        std::size_t count = 0;
        for (std::size_t at = 0; (at = text.find("All:", at)) != std::string::npos; ++at, ++count)
            least = std::min(least, std::stod(text.substr(at + 4)));
        EXPECT_EQ(count, wantedTimes(row).size());
        return least;
    }

    /// The times of the source's pictures in the range, relative to the first one.
    std::vector<double> wantedTimes(const Row& row) const
    {
        std::vector<double> wanted = times(source(row));
        std::erase_if(wanted, [&](double time) { return time < std::stod(row.start) - 1e-4; });
        const double first = wanted.at(0);
        for (double& time : wanted)
            time -= first;
        std::erase_if(wanted, [&](double time) { return time > std::stod(row.length) - 1e-4; });
        return wanted;
    }

    void expectTimesOfSource(const Row& row) const
    {
        const std::vector<double> shown = times(m_result);
        const std::vector<double> wanted = wantedTimes(row);
        EXPECT_GT(wanted.size(), 15U);
        ASSERT_EQ(shown.size(), wanted.size());
        for (std::size_t index = 0; index < shown.size(); ++index)
            EXPECT_NEAR(shown[index], wanted[index], 3e-6) << "picture " << index;
    }

    TemporaryDirectory m_folder;
    std::filesystem::path m_result = m_folder / "result.mp4";
    InstalledFFmpegs m_ffmpegs;
};

TEST_F(ExportedPicturesTest, AreThoseOfTheSourceAtTheirTimesWithEveryFFmpeg)
{
    std::cout << "Tested with: " << m_ffmpegs.names() << '\n';
    for (const InstalledFFmpeg& ffmpeg : m_ffmpegs.all()) {
        const std::string encoders =
            run({shimProgram("ffmpeg"), {"-encoders"}, {{"PATH", ffmpeg.path}}}).output;
        const bool hasX264 = encoders.find(" libx264 ") != std::string::npos;
        for (const Row& row : rows) {
            SCOPED_TRACE(ffmpeg.version + ", " + row.name);
            const Outcome outcome = exported(ffmpeg, row);
            ASSERT_EQ(outcome.exitStatus(), 0) << outcome.errors;
            expectTimesOfSource(row);
            EXPECT_GT(leastSimilarity(row), 0.9);
            const double megabits = number(m_result, "bit_rate") / 1e6;
            EXPECT_GT(megabits, hasX264 ? row.megabitsAtLeast : 4);
            EXPECT_LT(megabits, row.megabitsAtMost);
            // FFmpeg guesses the nominal rate of irregular pictures, and its versions guess differently.
            if (hasX264 && row.filters == jittered) {
                EXPECT_LE(number(m_result, "level"), 42);
            } else if (hasX264) {
                EXPECT_EQ(number(m_result, "level"), row.level);
            }
            const double length = number(m_result, "duration");
            EXPECT_NEAR(length, std::stod(row.length), 0.08);
            std::cout << ffmpeg.version << ", " << row.name << ": " << megabits << " Mbit/s, " << length
                      << " s\n";
        }
    }
}

} // namespace

} // namespace stackreel::shim
