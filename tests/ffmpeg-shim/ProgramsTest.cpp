#include "ffmpeg-shim/Arguments.h"
#include "tests/ffmpeg-shim/Invocation.h"
#include "tests/support/Awaited.h"
#include "tests/support/ChildReport.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace stackreel::shim
{

namespace
{

const std::string x264Line = " V....D libx264              libx264 H.264 (codec h264)";
const std::string openH264Line = " V....D libopenh264          OpenH264 (codec h264)";
const std::string videoToolboxLine = " V....D h264_videotoolbox    VideoToolbox H.264 (codec h264)";

/// A short form of the arguments with which an export runs `ffmpeg`.
const Arguments exportArguments{"-hide_banner", "-y",  "-i",     "in.mp4", "-c:v", "h264_videotoolbox",
                                "-allow_sw",    "1",   "-b:v",   "12M",    "-af",  "asetpts=PTS-STARTPTS",
                                "-c:a",         "aac", "out.mp4"};

/// A script in place of FFmpeg. When it is asked for its encoders, it records the query, prints FAKE_ENCODERS
/// and runs the command FAKE_QUERY. Otherwise it records its arguments, each followed by a NUL, and its
/// process id, and runs the command FAKE_WORK.
constexpr const char* fakeTool = R"(#!/bin/sh
if [ "$*" = '-hide_banner -encoders' ]; then
    echo asked >> "$FAKE_RECORD/questions"
    printf 'Encoders:\n ------\n%s\n' "$FAKE_ENCODERS"
    eval "$FAKE_QUERY"
    exit
fi
for argument; do printf '%s\0' "$argument"; done > "$FAKE_RECORD/arguments"
echo $$ > "$FAKE_RECORD/process"
eval "$FAKE_WORK"
)";

/// A folder with scripts in place of FFmpeg and with the files that they record.
class FakeSystem
{
public:
    /// Installs a fake `ffmpeg` and a fake `ffprobe`, and returns their folder, for PATH.
    std::string tools() const
    {
        m_folder.writeExecutable("tools/ffmpeg", fakeTool);
        m_folder.writeExecutable("tools/ffprobe", fakeTool);
        return (m_folder / "tools").string();
    }

    /// Copies the program under test into a folder and returns the path of that folder. The copy is another
    /// file, not a link.
    std::string copyOfShim(const std::string& folder) const
    {
        std::filesystem::create_directories(m_folder / folder);
        std::filesystem::copy_file(shimProgram("ffmpeg"), m_folder / folder / "ffmpeg");
        return (m_folder / folder).string();
    }

    Invocation invocation(const std::string& path, const Arguments& arguments) const
    {
        std::filesystem::create_directories(m_folder / "record");
        return {
            shimProgram("ffmpeg"),
            arguments,
            {{"PATH", path}, {"FAKE_RECORD", (m_folder / "record").string()}, {"FAKE_ENCODERS", x264Line}}};
    }

    const TemporaryDirectory& folder() const { return m_folder; }
    Arguments arguments() const { return pieces(record("arguments"), '\0'); }
    bool hasWorked() const { return std::filesystem::exists(m_folder / "record" / "arguments"); }
    std::string record(const std::string& name) const { return contentOf(m_folder / "record" / name); }

private:
    TemporaryDirectory m_folder;
};

/// Runs the program with the fake tools on PATH and the given variables.
Outcome runWithTools(const FakeSystem& system, const Arguments& arguments,
                     const std::vector<std::pair<std::string, std::string>>& variables = {})
{
    Invocation invocation = system.invocation(system.tools(), arguments);
    for (const auto& variable : variables)
        std::erase_if(invocation.variables, [&](const auto& old) { return old.first == variable.first; });
    invocation.variables.insert(invocation.variables.end(), variables.begin(), variables.end());
    return run(invocation);
}

/// Whether a process has the named pipe open for reading.
bool hasReader(const std::string& pipe)
{
    const int opened = ::open(pipe.c_str(), O_WRONLY | O_NONBLOCK);
    if (opened >= 0)
        ::close(opened);
    return opened >= 0;
}

/// Whether the text is exactly one line.
bool isOneLine(const std::string& text)
{
    return text.size() > 1 && text.back() == '\n' && std::ranges::count(text, '\n') == 1;
}

} // namespace

TEST(ShimPrograms, PassOtherArgumentsUnchangedWithoutAQueryForEncoders)
{
    const Arguments rows[] = {
        {"-version"},
        {"-i", "a b", "c\"d", "e'f", "", "caf\xc3\xa9", "\xe6\x9d\xb1", "\xff\xfe\x81\x88\x80",
         "$HOME `x` \\ \n\t*", ""},
        {"-allow_sw", "1", "-c:v", "h264_videotoolbox"},
        {"-c:v", "h264_videotoolbox", "-b:v", "12M", "-allow_sw", "1"},
        {"-c:v", "libx265", "-c:a", "aac", "-af", "volume=2"},
    };
    for (const Arguments& arguments : rows) {
        const FakeSystem system;
        EXPECT_EQ(runWithTools(system, arguments).exitStatus(), 0);
        EXPECT_EQ(system.arguments(), arguments);
        EXPECT_EQ(system.record("questions"), "");
    }
}

TEST(ShimPrograms, PassAnEmptyListOfArguments)
{
    const FakeSystem system;
    EXPECT_EQ(runWithTools(system, {}).exitStatus(), 0);
    EXPECT_TRUE(system.hasWorked());
    EXPECT_TRUE(system.arguments().empty());
}

TEST(ShimPrograms, PassThePathOfTheToolAsItsName)
{
    const FakeSystem system;
    std::filesystem::create_directories(system.folder() / "shell");
    std::filesystem::create_symlink("/bin/sh", system.folder() / "shell" / "ffmpeg");
    const std::string path = (system.folder() / "shell").string();
    const Outcome outcome = run(system.invocation(path, {"-c", "printf %s \"$0\""}));
    EXPECT_EQ(outcome.output, path + "/ffmpeg");
}

TEST(ShimPrograms, ReplaceTheEncoderByAnAvailableOne)
{
    struct Row {
        std::string encoders;
        H264Encoder expected;
    };
    const Row rows[] = {
        {x264Line, H264Encoder::x264},
        {openH264Line, H264Encoder::openH264},
        {openH264Line + '\n' + x264Line, H264Encoder::x264},
        {x264Line + '\n' + videoToolboxLine, H264Encoder::videoToolbox},
    };
    for (const Row& row : rows) {
        const FakeSystem system;
        EXPECT_EQ(runWithTools(system, exportArguments, {{"FAKE_ENCODERS", row.encoders}}).exitStatus(), 0);
        EXPECT_EQ(system.arguments(), withEncoder(exportArguments, row.expected)) << row.encoders;
        EXPECT_EQ(system.record("questions"), "asked\n");
    }
}

TEST(ShimPrograms, ReportsItsChangesOnStandardErrorOnlyOnRequest)
{
    const FakeSystem system;
    EXPECT_EQ(runWithTools(system, exportArguments).errors, "");
    EXPECT_EQ(runWithTools(system, exportArguments, {{"STACKREEL_REPORT_CHANGES", "1"}}).errors,
              "[stackreel] encoder=libx264: this FFmpeg has no h264_videotoolbox\n"
              "[stackreel] channel-layout=named: the AAC encoder refuses sound without a channel layout\n");
}

TEST(ShimPrograms, AnExportCarriesTheRecipeOfTheEnvironment)
{
    Arguments arguments = exportArguments;
    arguments.insert(arguments.begin(), {"-filter_complex", "null"});
    for (const std::string recipe : {"", R"({"stackreelRecipe":1,"aspect":"9:16"})"}) {
        const FakeSystem system;
        EXPECT_EQ(runWithTools(system, arguments, {{"STACKREEL_RECIPE", recipe}}).exitStatus(), 0);
        EXPECT_EQ(system.arguments(), withComment(withEncoder(arguments, H264Encoder::x264), recipe));
    }
}

TEST(ShimPrograms, KeepsBytesThatAreNotUtf8BesideTheRequest)
{
    Arguments arguments = exportArguments;
    arguments[3] = " \xff'\"\n";
    arguments.back() = "";
    const FakeSystem system;
    EXPECT_EQ(runWithTools(system, arguments).exitStatus(), 0);
    EXPECT_EQ(system.arguments(), withEncoder(arguments, H264Encoder::x264));
}

TEST(ShimPrograms, ReadAListOfEncodersThatIsLargerThanAPipe)
{
    const std::string filler =
        "i=0; while [ $i -lt 4000 ]; do echo ' A....D filler  a line of a long list of encoders'; "
        "i=$((i+1)); done; echo ' V....D libx264'";
    const FakeSystem system;
    EXPECT_EQ(
        runWithTools(system, exportArguments, {{"FAKE_ENCODERS", ""}, {"FAKE_QUERY", filler}}).exitStatus(),
        0);
    EXPECT_EQ(system.arguments(), withEncoder(exportArguments, H264Encoder::x264));
}

TEST(ShimPrograms, PrintOneLineWhenThereIsNoH264Encoder)
{
    for (const char* encoders : {"", " V....D mpeg4   MPEG-4", " V....D libx264rgb   RGB"}) {
        const FakeSystem system;
        const Outcome outcome = runWithTools(system, exportArguments, {{"FAKE_ENCODERS", encoders}});
        EXPECT_EQ(outcome.exitStatus(), 1);
        EXPECT_TRUE(isOneLine(outcome.errors)) << outcome.errors;
        EXPECT_NE(outcome.errors.find("has no H.264 encoder"), std::string::npos) << outcome.errors;
        EXPECT_EQ(outcome.output, "");
        EXPECT_FALSE(system.hasWorked());
    }
}

TEST(ShimPrograms, FailWhenTheQueryForEncodersFails)
{
    for (const char* query : {"exit 3", "kill -SEGV $$", "echo noise >&2; exit 1"}) {
        const FakeSystem system;
        const Outcome outcome = runWithTools(system, exportArguments, {{"FAKE_QUERY", query}});
        EXPECT_EQ(outcome.exitStatus(), 1) << query;
        EXPECT_TRUE(isOneLine(outcome.errors)) << outcome.errors;
        EXPECT_NE(outcome.errors.find("could not be asked"), std::string::npos) << outcome.errors;
        EXPECT_FALSE(system.hasWorked());
    }
}

TEST(ShimPrograms, PrintOneLineWhenThereIsNoTool)
{
    for (const char* name : {"ffmpeg", "ffprobe"}) {
        const FakeSystem system;
        std::filesystem::create_directories(system.folder() / "empty");
        Invocation invocation = system.invocation((system.folder() / "empty").string(), exportArguments);
        invocation.program = shimProgram(name);
        const Outcome outcome = run(invocation);
        EXPECT_EQ(outcome.exitStatus(), 127);
        EXPECT_EQ(outcome.errors, std::string(name) + " is missing. Build the bundled media tools first.\n");
        EXPECT_EQ(outcome.output, "");
    }
}

TEST(ShimPrograms, TakesTheBundledToolBelowTheWorkingFolderBeforeThePath)
{
    const FakeSystem system;
    system.folder().writeExecutable("below/third_party/ffmpeg/bin/ffmpeg", "#!/bin/sh\necho bundled\n");
    const Invocation inside{"/bin/sh",
                            {"-c", "cd \"$0\" && exec \"$@\"", (system.folder() / "below").string(),
                             shimProgram("ffmpeg").string(), "-version"},
                            system.invocation(system.tools(), {}).variables};
    EXPECT_EQ(run(inside).output, "bundled\n");
    EXPECT_FALSE(system.hasWorked());
}

TEST(ShimPrograms, IgnoreOtherToolsBelowTheWorkingFolder)
{
    const FakeSystem system;
    system.tools();
    for (const char* path : {"", ":", ".", "tools", "./tools:../tools"}) {
        const Invocation inside{"/bin/sh",
                                {"-c", "cd \"$0\" && exec \"$@\"", system.folder().path().string(),
                                 shimProgram("ffmpeg").string(), "-version"},
                                system.invocation(path, {}).variables};
        EXPECT_EQ(run(inside).exitStatus(), 127) << '"' << path << '"';
    }
    EXPECT_FALSE(system.hasWorked());
}

TEST(ShimPrograms, NeverStartThemselves)
{
    const std::string own = STACKREEL_SHIM_DIR;
    for (const Arguments& arguments : {Arguments{"-version"}, exportArguments}) {
        const FakeSystem system;
        std::filesystem::create_directories(system.folder() / "links");
        std::filesystem::create_symlink(shimProgram("ffmpeg"), system.folder() / "links" / "ffmpeg");
        const std::string itself = own + ':' + (system.folder() / "links").string();
        EXPECT_EQ(run(system.invocation(itself, arguments)).exitStatus(), 127);
        EXPECT_EQ(run(system.invocation(itself + ':' + system.tools(), arguments)).exitStatus(), 0);
        EXPECT_EQ(system.arguments(), withEncoder(arguments, H264Encoder::x264));
    }
}

TEST(ShimPrograms, DoNotStartEachOtherForEverAsTwoCopies)
{
    for (const Arguments& arguments : {Arguments{"-version"}, exportArguments}) {
        const FakeSystem system;
        const std::string copies = system.copyOfShim("one") + ':' + system.copyOfShim("two");
        const Outcome alone = run(system.invocation(copies, arguments));
        EXPECT_NE(alone.exitStatus(), 0);
        EXPECT_TRUE(isOneLine(alone.errors)) << alone.errors;
        EXPECT_EQ(run(system.invocation(copies + ':' + system.tools(), arguments)).exitStatus(), 0);
        EXPECT_EQ(system.arguments(), withEncoder(arguments, H264Encoder::x264));
    }
}

TEST(ShimPrograms, StartAScriptThatStartsThemOnlyOnce)
{
    for (const Arguments& arguments : {Arguments{"-version"}, exportArguments}) {
        const FakeSystem system;
        system.folder().writeExecutable("script/ffmpeg",
                                        "#!/bin/sh\nexec '" + shimProgram("ffmpeg").string() + "' \"$@\"\n");
        const std::string script = (system.folder() / "script").string();
        EXPECT_NE(run(system.invocation(script, arguments)).exitStatus(), 0);
        EXPECT_EQ(run(system.invocation(script + ':' + system.tools(), arguments)).exitStatus(), 0);
        EXPECT_EQ(system.arguments(), withEncoder(arguments, H264Encoder::x264));
    }
}

TEST(ShimPrograms, FailWhenTheToolCannotBeStarted)
{
    const FakeSystem system;
    system.folder().writeExecutable("broken/ffmpeg", "#!/nowhere/interpreter\n");
    const std::string path = (system.folder() / "broken").string();
    const Outcome passing = run(system.invocation(path, {"-version"}));
    EXPECT_EQ(passing.exitStatus(), 126);
    EXPECT_TRUE(isOneLine(passing.errors)) << passing.errors;
    EXPECT_NE(passing.errors.find("could not be started"), std::string::npos) << passing.errors;
    const Outcome asking = run(system.invocation(path, exportArguments));
    EXPECT_EQ(asking.exitStatus(), 1);
    EXPECT_TRUE(isOneLine(asking.errors)) << asking.errors;
}

TEST(ShimPrograms, AreReplacedByTheToolInTheSameProcess)
{
    for (const Arguments& arguments : {Arguments{"-version"}, exportArguments}) {
        const FakeSystem system;
        const Outcome exited =
            runWithTools(system, arguments, {{"FAKE_WORK", "echo out; echo err >&2; exit 7"}});
        EXPECT_EQ(exited.exitStatus(), 7);
        EXPECT_EQ(exited.output, "out\n");
        EXPECT_EQ(exited.errors, "err\n");
        EXPECT_EQ(system.record("process"), std::to_string(exited.process) + '\n');
        EXPECT_EQ(runWithTools(system, arguments, {{"FAKE_WORK", "kill -TERM $$"}}).endingSignal(), SIGTERM);
        EXPECT_EQ(runWithTools(system, arguments, {{"FAKE_WORK", "kill -KILL $$"}}).endingSignal(), SIGKILL);
    }
}

TEST(ShimPrograms, LeaveStandardInputToTheTool)
{
    const FakeSystem system;
    Invocation invocation = system.invocation(system.tools(), exportArguments);
    invocation.variables.insert(invocation.variables.end(), {{"FAKE_QUERY", "read line; exit 0"},
                                                             {"FAKE_WORK", "read line; echo \"$line\""}});
    invocation.input = system.folder().write("input", "first\nsecond\n");
    EXPECT_EQ(run(invocation).output, "first\n");
}

TEST(ShimPrograms, PassNoDescriptorToTheQueryOrTheTool)
{
    const std::string list = "for f in /proc/$$/fd/*; do echo \"${f##*/}\"; done > \"$FAKE_RECORD/";
    const FakeSystem system;
    Invocation direct = system.invocation(system.tools(), exportArguments);
    direct.program = system.folder() / "tools" / "ffmpeg";
    direct.variables.emplace_back("FAKE_WORK", list + "direct\"");
    ASSERT_EQ(run(direct).exitStatus(), 0);
    ASSERT_NE(system.record("direct"), "");
    EXPECT_EQ(runWithTools(system, exportArguments,
                           {{"FAKE_QUERY", list + "question\""}, {"FAKE_WORK", list + "work\""}})
                  .exitStatus(),
              0);
    EXPECT_EQ(system.record("question"), system.record("direct"));
    EXPECT_EQ(system.record("work"), system.record("direct"));
}

TEST(ShimPrograms, FindsTheEncoderWithClosedDescriptorsAndIgnoredChildren)
{
    // The program is started with SIGCHLD ignored, or with some standard streams closed.
    for (const char* command : {"trap '' CHLD; exec \"$@\"", "exec \"$@\" <&-", "exec \"$@\" >&-",
                                "exec \"$@\" <&- >&-", "exec \"$@\" <&- >&- 2>&-"}) {
        const FakeSystem system;
        Arguments arguments{"-c", command, "sh", shimProgram("ffmpeg").string()};
        arguments.insert(arguments.end(), exportArguments.begin(), exportArguments.end());
        const Invocation invocation{"/bin/sh", arguments, system.invocation(system.tools(), {}).variables};
        EXPECT_EQ(run(invocation).exitStatus(), 0) << command;
        EXPECT_EQ(system.arguments(), withEncoder(exportArguments, H264Encoder::x264)) << command;
    }
}

TEST(ShimPrograms, EndWithTheQueriedToolWhenASignalArrives)
{
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGQUIT, SIGKILL}) {
        const FakeSystem system;
        const std::string gate = (system.folder() / "gate").string();
        ASSERT_EQ(::mkfifo(gate.c_str(), 0600), 0);
        Invocation invocation = system.invocation(system.tools(), exportArguments);
        invocation.variables.emplace_back("GATE", gate);
        invocation.variables.emplace_back("FAKE_QUERY", "trap '' TERM; read line < \"$GATE\"");
        RunningProgram program(invocation, system.folder() / "output", system.folder() / "errors");
        // The fake tool is being asked for its encoders and reads from the named pipe. Only then can the pipe
        // be opened for writing without blocking.
        int opened = -1;
        EXPECT_TRUE(eventually([&] { return (opened = ::open(gate.c_str(), O_WRONLY | O_NONBLOCK)) >= 0; }));
        ::kill(program.process(), signal);
        EXPECT_EQ(program.wait().endingSignal(), signal);
        EXPECT_FALSE(system.hasWorked());
        // The pipe must stay open for writing until then, because closing it would end the tool.
        EXPECT_TRUE(eventually([&] { return !hasReader(gate); }, std::chrono::seconds(5))) << signal;
        ::close(opened);
    }
}

TEST(ShimPrograms, PassTheArgumentsOfFfprobeUnchanged)
{
    const FakeSystem system;
    Arguments arguments = exportArguments;
    arguments.emplace_back("\xff");
    Invocation invocation = system.invocation(STACKREEL_SHIM_DIR ":" + system.tools(), arguments);
    invocation.program = shimProgram("ffprobe");
    invocation.variables.emplace_back("FAKE_WORK", "exit 9");
    EXPECT_EQ(run(invocation).exitStatus(), 9);
    EXPECT_EQ(system.arguments(), arguments);
    EXPECT_EQ(system.record("questions"), "");
}

} // namespace stackreel::shim
