#include "model/PictureCheck.h"

#include "framing/CropRegion.h"
#include "media/CancellationError.h"
#include "media/MediaProbe.h"
#include "model/SourceExport.h"
#include "tests/integration/Clips.h"
#include "tests/support/Awaited.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace stackreel
{

namespace
{

class PictureCheckTest : public testing::Test
{
protected:
    /// A request for a small export, without sound, of a clip between two times.
    ExportRequest requestFor(const std::filesystem::path& clip, double from, double to) const
    {
        const MediaInfo media = runToEnd(MediaProbe::inspect(clip));
        const auto [top, bottom] = CropRegion::initialPair(media.displayAspect(), 9.0 / 8);
        return {.input = clip,
                .output = m_folder / "out.mp4",
                .media = media,
                .top = top,
                .bottom = bottom,
                .settings = {.aspect = OutputAspect::custom, .customWidth = 180, .customHeight = 320},
                .trimStart = from,
                .trimEnd = to};
    }

    std::filesystem::path clip(const ClipRecipe& recipe) const
    {
        const auto file = m_folder / "clip.mov";
        makeClip(file, recipe);
        return file;
    }

    /// Installs a script as `ffmpeg` and returns a PATH that finds it first. If the script is called to
    /// encode, it changes the arguments by the `sed` command `change` (one argument per line); then it runs
    /// the system's FFmpeg.
    std::string pathWithModifiedFFmpeg(const std::string& change) const
    {
        m_folder.writeExecutable(
            "changing/ffmpeg",
            "#!/bin/bash\nPATH=${PATH#*:}\ncase \" $* \" in *' libx264 '*) ;; *) exec "
            "ffmpeg \"$@\" ;; esac\nmapfile -t changed < <(printf '%s\\n' \"$@\" | sed \"" +
                change + "\")\nexec ffmpeg \"${changed[@]}\"\n");
        return (m_folder / "changing").string() + ":" + std::getenv("PATH");
    }

    /// Exports with an FFmpeg whose arguments are changed by `change`. Returns the error message; empty if
    /// the export succeeds.
    std::string exportError(const ExportRequest& request, const std::string& change) const
    {
        const ScopedEnvironment path("PATH", pathWithModifiedFFmpeg(change));
        try {
            runToEnd(exportSource(request));
        } catch (const std::exception& error) {
            return error.what();
        }
        return "";
    }

    TemporaryDirectory m_folder;
};

const std::string begin = "The exported video does not begin with the picture of the source. The encoder of "
                          "FFmpeg may be at fault.";
const std::string end =
    "The exported video does not end with the picture of the source. The encoder of FFmpeg may be at fault.";

/// A `sed` command that adds a filter to the graph: it covers the output with grey while the condition is
/// true.
std::string greyOverlay(const std::string& condition)
{
    return "s/format=yuv420p,/drawbox=color=gray:t=fill:enable='" + condition + "',format=yuv420p,/";
}

} // namespace

TEST_F(PictureCheckTest, RejectsAResultWithOtherPictures)
{
    const auto moving = m_folder / "moving.mp4";
    runFFmpeg({"-f", "lavfi", "-i", "testsrc2=size=640x360:rate=25:duration=3,scroll=horizontal=0.01", "-c:v",
               "libx264", "-pix_fmt", "yuv420p", moving.string()});
    const ExportRequest request = requestFor(moving, 1, 2);
    EXPECT_EQ(exportError(request, ""), "");
    EXPECT_EQ(exportError(request, greyOverlay("lt(n\\,3)")), begin);
    EXPECT_EQ(exportError(request, greyOverlay("gte(n\\,24)")), end);
    EXPECT_EQ(exportError(request, greyOverlay("1")), begin);
    EXPECT_EQ(exportError(request, "s/:x=[0-9]*/:x=200/g"), begin) << "another crop";
    EXPECT_EQ(exportError(request, "s/^1\\.000$/0.000/"), begin) << "another time";
    EXPECT_EQ(exportError(request, "s/setsar=1/setsar=1,hflip/g"), begin);
}

TEST_F(PictureCheckTest, RejectsAResultWhosePicturesCannotBeDecoded)
{
    const auto moving = clip({.seconds = 1, .audio = false});
    const ExportRequest request = requestFor(moving, 0, 1);
    // The stream's header stays whole, so that ffprobe reports the file as right.
    EXPECT_EQ(exportError(request, "s/^setts=/noise=amount=1,setts=/"), begin);
}

TEST_F(PictureCheckTest, AcceptsBlackAndFlatSources)
{
    const auto file = m_folder / "clip.mov";
    for (const char* filter :
         {"color=black:size=640x360:rate=25:duration=1", "color=gray:size=640x360:rate=25:duration=1",
          "testsrc2=size=640x360:rate=25:duration=1,fade=in:0:10,fade=out:15:10"}) {
        runFFmpeg({"-f", "lavfi", "-i", filter, "-c:v", "libx264", "-pix_fmt", "yuv420p", file.string()});
        EXPECT_EQ(exportError(requestFor(file, 0, 1), ""), "") << filter;
    }
    runFFmpeg({"-f", "lavfi", "-i", "color=black:size=640x360:rate=25:duration=1", "-c:v", "libx264",
               file.string()});
    EXPECT_EQ(exportError(requestFor(file, 0, 1), greyOverlay("1")), begin);
}

// BT.601 and BT.709 order the luma of such colours differently.
TEST_F(PictureCheckTest, AcceptsColoursWhoseOrderOfLumaTheConversionChanges)
{
    struct Row {
        const char* left;
        const char* right;
        std::vector<std::string> encoding; ///< filters and codec
    };
    const std::string tagged = "setparams=range=tv:color_primaries=bt709:color_trc=bt709:colorspace=";
    const Row rows[] = {
        {"0xdc2828", "0x3c7828", {"-vf", "format=yuv420p", "-c:v", "libx264"}},
        {"0xdc2828", "0x3c7828", {"-vf", "format=yuv420p," + tagged + "smpte170m", "-c:v", "libx264"}},
        {"0xdc2828", "0x3c7828", {"-vf", "format=yuv420p," + tagged + "fcc", "-c:v", "libx264"}},
        {"0xc828c8", "0x286e28", {"-vf", "format=yuv420p," + tagged + "bt470bg", "-c:v", "libx264"}},
        {"0xc828c8", "0x286e28", {"-vf", "format=rgb24", "-c:v", "png"}},
    };
    const auto file = m_folder / "colours.mov";
    for (const Row& row : rows) {
        const auto stripes = [](const char* colour) {
            return std::string("color=") + colour + ":size=160x360:rate=25:duration=1,split";
        };
        std::vector<std::string> arguments = {"-f", "lavfi", "-i",
                                              stripes(row.left) + "[a][c];" + stripes(row.right) +
                                                  "[b][d];[a][b][c][d]hstack=inputs=4"};
        arguments.insert(arguments.end(), row.encoding.begin(), row.encoding.end());
        arguments.push_back(file.string());
        runFFmpeg(arguments);
        const ExportRequest request = requestFor(file, 0, 1);
        EXPECT_EQ(exportError(request, ""), "") << row.left << ' ' << row.encoding[1];
        EXPECT_EQ(exportError(request, "s|setsar=1|setsar=1,drawbox=h=ih/2:color=white:t=fill|g"), begin)
            << row.left << ' ' << row.encoding[1];
    }
}

// White of high dynamic range is much brighter in the export than as a signal in the source, and the order of
// luma of saturated colours is another.
TEST_F(PictureCheckTest, AcceptsHighDynamicRange)
{
    std::string stripes = "nullsrc=size=640x360:rate=25:duration=1,format=gbrp";
    const char* const colours[] = {"0x288282", "0x284682", "0x64a082", "0x0a820a", "0x644682", "0x2828a0",
                                   "0x648282", "0x6464a0", "0x2828a0", "0x288264", "0xa00aa0", "0x0a2882",
                                   "0x0a460a", "0x466482", "0xa064a0", "0x6464a0"};
    for (int x = 0; const char* colour : colours)
        stripes += ",drawbox=x=" + std::to_string(40 * x++) + ":w=40:t=fill:color=" + colour;
    const std::string size = "size=640x360:rate=25:duration=1";
    const auto file = m_folder / "hdr.mkv";
    for (const char* transfer : {"smpte2084", "arib-std-b67"})
        for (const std::string& picture :
             {"color=0x949494:" + size, "testsrc2=" + size, "color=black:" + size, "color=0x303030:" + size,
              "color=0xb0b0b0:" + size, stripes}) {
            runFFmpeg({"-f", "lavfi", "-i", picture, "-vf",
                       "scale=out_color_matrix=bt2020:out_range=tv,format=yuv420p10le,setparams=range=tv:"
                       "color_primaries=bt2020:colorspace=bt2020nc:color_trc=" +
                           std::string(transfer),
                       "-c:v", "ffv1", file.string()});
            const ExportRequest request = requestFor(file, 0, 1);
            EXPECT_EQ(exportError(request, ""), "") << transfer << ' ' << picture;
        }
    // The last one is that of the stripes.
    EXPECT_EQ(exportError(requestFor(file, 0, 1), "s/setsar=1/setsar=1,negate/g"), begin);
}

TEST_F(PictureCheckTest, AcceptsRightResultsOfAnySource)
{
    const auto passes = [&](const std::vector<std::string>& arguments, const std::string& name, double from,
                            double to) {
        const auto file = m_folder / name;
        std::vector<std::string> words = arguments;
        words.push_back(file.string());
        runFFmpeg(words);
        EXPECT_EQ(exportError(requestFor(file, from, to), ""), "")
            << name << " from " << from << " to " << to;
    };
    const std::string pattern = "testsrc2=size=640x360:rate=30:duration=3";
    const std::vector<std::string> picture = {"-f", "lavfi", "-i", pattern};
    const std::vector<std::string> coding = {"-c:v", "libx264", "-preset", "veryfast", "-pix_fmt", "yuv420p"};
    const auto with = [&](std::vector<std::string> more) {
        std::vector<std::string> words = picture;
        words.insert(words.end(), more.begin(), more.end());
        words.insert(words.end(), coding.begin(), coding.end());
        return words;
    };
    passes(with({"-vf", "select='not(mod(n,7))+between(n,40,60)'", "-fps_mode", "passthrough"}),
           "variable.mp4", 0.4, 2.3);
    passes(with({"-vf", "interlace", "-flags", "+ildct+ilme"}), "interlaced.mp4", 0.7, 1.9);
    passes(with({"-f", "lavfi", "-i", "sine=duration=6"}), "short picture.mp4", 0.5, 6);
    passes(with({"-bf", "3", "-g", "15"}), "stream.ts", 1.21, 1.73);
    // There is only one key frame. FFmpeg starts to decode behind it when it seeks in a stream.
    passes({"-f", "lavfi", "-i", pattern, "-c:v", "libx265", "-x265-params", "log-level=none"}, "hevc.ts", 0,
           3);
    passes(with({}), "moment.mkv", 2.7, 3);
    passes({"-itsoffset", "0.7", "-f", "lavfi", "-i", pattern, "-f", "lavfi", "-i", "sine=duration=4", "-c:v",
            "libx264", "-pix_fmt", "yuv420p"},
           "late.mkv", 0, 2);
}

TEST_F(PictureCheckTest, CanBeCancelled)
{
    ExportRequest request = requestFor(clip({.seconds = 1, .audio = false}), 0, 1);
    std::stop_source stop;
    stop.request_stop();
    const auto check = [&]() -> QCoro::Task<bool> {
        co_await checkPictures("/bin/false", request, stop.get_token());
        co_return true;
    };
    EXPECT_THROW(runToEnd(check()), CancellationError);
}

} // namespace stackreel
