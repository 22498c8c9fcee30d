// What the front asks before an export, with scripts in place of FFmpeg and ffprobe.
#include "ffmpeg-shim/Arguments.h"
#include "tests/ffmpeg-shim/Invocation.h"
#include "tests/support/ChildReport.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace stackreel::shim
{

namespace
{

/// Records what it is asked. Prints its lists when it is asked for them, and records its arguments otherwise.
constexpr const char* fakeFFmpeg = R"(#!/bin/sh
echo "$*" >> "$FAKE_RECORD/questions"
case "$*" in
*-encoders) echo " V....D $FAKE_ENCODER  an encoder" ;;
*-filters) echo " TSC $FAKE_FILTER  V->V  a filter" ;;
*) for argument; do printf '%s\0' "$argument"; done > "$FAKE_RECORD/arguments" ;;
esac
)";

constexpr const char* fakeFFprobe = R"(#!/bin/sh
for last; do :; done
echo "ffprobe $last" >> "$FAKE_RECORD/questions"
eval "$FAKE_COLOURS"
)";

const std::string bt709 = "printf 'width=1920\nheight=1080\npix_fmt=yuv420p\ncolor_space=bt709\n'";
const std::string pq = bt709 + "; printf 'color_transfer=smpte2084\ncolor_primaries=bt2020\n'";
const std::string wide = bt709 + "; printf 'color_primaries=smpte432\n'";
const std::string tags = ",setparams=range=tv:color_primaries=bt709:color_trc=bt709:colorspace=bt709";

const std::string unknownColours =
    "The video keeps the colours of the source: ffprobe does not describe them.\n";

const std::string half = "crop=w=8:h=8:x=0:y=0,scale=8:8:flags=bicubic,setsar=1";
const std::string graph =
    "[0:v:0]split=2[a][b];[a]" + half + "[c];[b]" + half + "[d];[c][d]vstack=inputs=2,format=yuv420p[video]";
const Arguments exportArguments{"-i",   "a b.mp4",           "-filter_complex", graph, "-map",   "[video]",
                                "-c:v", "h264_videotoolbox", "-allow_sw",       "1",   "out.mp4"};

class ExportColoursTest : public testing::Test
{
protected:
    /// Runs the front on an export of a source whose report is printed by the command `colours`.
    Outcome exported(const std::string& colours, const std::string& filter = "lut3d",
                     const std::string& encoder = "libx264") const
    {
        installTools();
        return run(invocation(colours, filter, encoder));
    }

    void installTools() const
    {
        m_folder.writeExecutable("tools/ffmpeg", fakeFFmpeg);
        m_folder.writeExecutable("tools/ffprobe", fakeFFprobe);
    }

    Invocation invocation(const std::string& colours, const std::string& filter = "lut3d",
                          const std::string& encoder = "libx264") const
    {
        std::filesystem::create_directories(m_folder / "record");
        return {shimProgram("ffmpeg"),
                exportArguments,
                {{"PATH", (m_folder / "tools").string()},
                 {"FAKE_RECORD", (m_folder / "record").string()},
                 {"FAKE_ENCODER", encoder},
                 {"FAKE_FILTER", filter},
                 {"FAKE_COLOURS", colours}}};
    }

    /// The same, with all changes as lines on standard error.
    Outcome reported(const std::string& colours, const std::string& filter = "lut3d") const
    {
        installTools();
        Invocation reporting = invocation(colours, filter);
        reporting.variables.emplace_back("STACKREEL_REPORT_CHANGES", "1");
        return run(reporting);
    }

    Arguments arguments() const { return pieces(contentOf(m_folder / "record" / "arguments"), '\0'); }
    std::string exportedGraph() const { return arguments().at(3); }
    std::string questions() const { return contentOf(m_folder / "record" / "questions"); }

    TemporaryDirectory m_folder;
};

Arguments withoutColours()
{
    return withEncoder(exportArguments, H264Encoder::x264);
}

} // namespace

TEST_F(ExportColoursTest, ArgumentsKeepTheirFiltersWhereTheSourceIsUnknown)
{
    for (const char* colours : {"exit 1", "true", "kill -SEGV $$", "echo width=8", "printf '\\377\\0=\\n'"}) {
        const Outcome outcome = exported(colours);
        EXPECT_EQ(outcome.exitStatus(), 0);
        EXPECT_EQ(outcome.errors, unknownColours) << colours;
        EXPECT_EQ(arguments(), withoutColours()) << colours;
    }
    EXPECT_NE(reported("exit 1").errors.find("[stackreel] colours=unconverted: "), std::string::npos);
}

TEST_F(ExportColoursTest, ArgumentsKeepTheirFiltersWithoutFfprobe)
{
    m_folder.writeExecutable("tools/ffmpeg", fakeFFmpeg);
    const Outcome outcome = run(invocation(bt709));
    EXPECT_EQ(outcome.exitStatus(), 0);
    EXPECT_EQ(outcome.errors, unknownColours);
    EXPECT_EQ(arguments(), withoutColours());
}

TEST_F(ExportColoursTest, AreFoundByAToolThatIsTheSameFileAsFfmpeg)
{
    m_folder.writeExecutable("real/ffmpeg", fakeFFmpeg);
    m_folder.writeExecutable("real/ffprobe", fakeFFprobe);
    m_folder.writeExecutable("launcher", "#!/bin/sh\nexec \"$FAKE_RECORD/../real/${0##*/}\" \"$@\"\n");
    std::filesystem::create_directories(m_folder / "tools");
    for (const char* name : {"ffmpeg", "ffprobe"})
        std::filesystem::create_symlink(m_folder / "launcher", m_folder / "tools" / name);
    const Outcome outcome = run(invocation(bt709));
    EXPECT_EQ(outcome.errors, "");
    EXPECT_NE(exportedGraph().find(tags), std::string::npos) << exportedGraph();
}

TEST_F(ExportColoursTest, OnlyTheSourceIsAskedAboutAndOnlyOnce)
{
    const Outcome outcome = exported(bt709);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(exportedGraph(), withoutColours().at(3).substr(0, graph.size() - 7) + tags + "[video]");
    EXPECT_TRUE(questions().starts_with("-hide_banner -encoders\nffprobe a b.mp4\n-i a b.mp4"))
        << questions();
}

TEST_F(ExportColoursTest, NothingIsAskedWhereTheEncoderIsThere)
{
    exported(pq, "lut3d", "h264_videotoolbox");
    EXPECT_EQ(arguments(), exportArguments);
    EXPECT_EQ(questions().find("ffprobe"), std::string::npos);
}

TEST_F(ExportColoursTest, TakesTheTablesOfItsOwnFolder)
{
    for (const std::string& name : {std::string("pq"), std::string("p3")}) {
        EXPECT_EQ(exported(name == "pq" ? pq : wide).errors, "");
        const std::string path = (shimProgram("ffmpeg").parent_path() / "colours" / name).string();
        EXPECT_NE(exportedGraph().find("lut3d=file=" + path + ".cube:"), std::string::npos)
            << exportedGraph();
        EXPECT_TRUE(std::filesystem::exists(path + ".cube"));
    }
}

TEST_F(ExportColoursTest, ChangesAreReportedAfterTheEncoder)
{
    const std::string errors = reported(pq).errors;
    EXPECT_TRUE(errors.starts_with("[stackreel] encoder=libx264: this FFmpeg has no h264_videotoolbox\n"
                                   "[stackreel] colours=bt709: "))
        << errors;
    EXPECT_NE(errors.find("\n[stackreel] dynamic-range=standard: the source is PQ\n"), std::string::npos);
}

TEST_F(ExportColoursTest, HighDynamicRangeWithoutAFilterIsReportedAndExportedPlainly)
{
    const Outcome outcome = exported(pq, "overlay");
    EXPECT_EQ(outcome.exitStatus(), 0);
    EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1) << outcome.errors;
    EXPECT_TRUE(outcome.errors.starts_with("The video keeps the dynamic range of the source: "))
        << outcome.errors;
    EXPECT_EQ(exportedGraph().find("lut3d"), std::string::npos);
    EXPECT_EQ(exportedGraph().find("zscale"), std::string::npos);
    EXPECT_NE(exportedGraph().find(tags), std::string::npos);
    const std::string line = "[stackreel] dynamic-range=unconverted: ";
    EXPECT_NE(reported(pq, "overlay").errors.find(line), std::string::npos);
}

TEST_F(ExportColoursTest, PrimariesWithoutAFilterAreReported)
{
    EXPECT_TRUE(
        exported(wide, "overlay").errors.starts_with("The video keeps the primaries of the source: "));
    EXPECT_NE(exportedGraph().find(tags), std::string::npos);
    EXPECT_NE(reported(wide, "overlay").errors.find("[stackreel] primaries=unconverted: "),
              std::string::npos);
}

} // namespace stackreel::shim
