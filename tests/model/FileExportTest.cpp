#include "model/FileExport.h"

#include "media/CancellationError.h"
#include "media/MediaToolError.h"
#include "model/ExportError.h"
#include "system/TerminationSignals.h"
#include "tests/model/FakeToolTest.h"
#include "tests/support/Awaited.h"
#include "tests/support/ChildReport.h"
#include "tests/support/ScopedSystemCalls.h"
#include "tests/support/fakes/ManualTask.h"

#include <sys/stat.h>

#include <algorithm>
#include <csignal>
#include <mutex>
#include <thread>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

QCoro::Task<ExportTurn> atOnce()
{
    co_return ExportTurn();
}

/// The window's exports into a folder of their own.
class FileExportTest : public FakeToolTest
{
protected:
    FileExportTest() { fs::create_directory(folder); }
    void writeOld() const { m_directory.write("to/out.mp4", "old"); }
    Names names() const
    {
        Names found;
        for (const auto& entry : fs::directory_iterator(folder))
            found.push_back(entry.path().filename());
        return found;
    }
    /// Installs an `ffprobe` that reports a source with sound and an export of `seconds`, and these packets
    /// of the source.
    void installProbe(const std::string& seconds, const std::string& packets) const
    {
        const std::string picture = R"({"codec_type": "video", "codec_name": "h264", "width": 1080, )";
        m_directory.writeExecutable("third_party/ffmpeg/bin/ffprobe",
                                    "#!/bin/sh\ncase \"$*\" in\n*-read_intervals*) printf '" + packets +
                                        "' ;;\n*.mp4) echo '{\"streams\": [" + picture +
                                        R"("height": 1920, "duration": ")" + seconds +
                                        "\"}]}' ;;\n*) echo '{\"streams\": [" + picture +
                                        R"("height": 720}, {"codec_type": "audio"}]})" + "' ;;\nesac\n");
    }
    /// The message of the export's failure; empty when it succeeds.
    std::string failure(std::stop_token stop = {}) const
    {
        try {
            runToEnd(FileExport::replace(request, atOnce, stop));
        } catch (const std::exception& error) {
            return error.what();
        }
        return "";
    }

    const fs::path folder = m_directory / "to";
    const ExportRequest request =
        landscapeRequest(m_directory.write("source.mov", "a clip"), folder / "out.mp4");
    std::stop_source m_stop;
};

} // namespace

TEST_F(FileExportTest, WritesANewFileUnderItsOwnName)
{
    installTool("printf whole > \"$destination\"\n");
    EXPECT_EQ(runToEnd(FileExport::replace(request, atOnce, {})), request.output);
    EXPECT_EQ(arguments().back(), request.output);
    EXPECT_EQ(contentOf(request.output), "whole");
}

TEST_F(FileExportTest, TakesTheNameOfANewFileBeforeItsTurn)
{
    installTool("printf whole > \"$destination\"\n");
    ManualTask<ExportTurn> turn;
    const auto wait = [&turn] { return turn.task(); };
    Awaited<fs::path> exported(FileExport::replace(request, wait, {}));
    ASSERT_TRUE(eventually([this] { return names() == Names{"out.mp4"}; }));
    EXPECT_FALSE(hasRun());
    turn.complete(ExportTurn());
    EXPECT_EQ(exported.result(), request.output);
    EXPECT_EQ(contentOf(request.output), "whole");
}

TEST_F(FileExportTest, LeavesNothingWhenItIsCancelledBeforeItsTurn)
{
    installTool("printf whole > \"$destination\"\n");
    ManualTask<ExportTurn> turn;
    const auto wait = [&turn] { return turn.task(); };
    Awaited<fs::path> exported(FileExport::replace(request, wait, {}));
    ASSERT_TRUE(eventually([this] { return names() == Names{"out.mp4"}; }));
    turn.fail(CancellationError());
    EXPECT_THROW(exported.result(), CancellationError);
    EXPECT_EQ(names(), Names());
    EXPECT_FALSE(hasRun());
}

TEST_F(FileExportTest, ReplacesAFileInOneStepAndKeepsItsPermissions)
{
    writeOld();
    fs::permissions(request.output, fs::perms::owner_read | fs::perms::owner_write);
    // The old file is copied while the new one is written.
    installTool("printf whole > \"$destination\"\ncp \"${destination%/*}/out.mp4\" seen\n");
    EXPECT_EQ(failure(), "");
    EXPECT_EQ(contentOf(m_directory / "seen"), "old");
    EXPECT_EQ(contentOf(request.output), "whole");
    EXPECT_EQ(fs::status(request.output).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(names(), Names{"out.mp4"});
}

TEST_F(FileExportTest, ReplacesTheFileBehindALink)
{
    m_directory.write("elsewhere/file.mp4", "old");
    fs::create_symlink(m_directory / "elsewhere/file.mp4", request.output);
    installTool("printf whole > \"$destination\"\n");
    EXPECT_EQ(failure(), "");
    EXPECT_TRUE(fs::is_symlink(request.output));
    EXPECT_EQ(contentOf(m_directory / "elsewhere/file.mp4"), "whole");
}

TEST_F(FileExportTest, KeepsAPartialNewFileOnlyWhenItFails)
{
    installTool("printf half > \"$destination\"\necho 'Invalid data found' >&2\nexit 69\n");
    EXPECT_EQ(failure(), "Invalid data found");
    EXPECT_EQ(contentOf(request.output), "half");
    fs::remove(request.output);

    installWaitingTool();
    Awaited<fs::path> exported(FileExport::replace(request, atOnce, m_stop.get_token()));
    ASSERT_TRUE(eventually([this] { return isWaiting(); }));
    m_stop.request_stop();
    EXPECT_THROW(exported.result(), CancellationError);
    EXPECT_EQ(names(), Names());
}

TEST_F(FileExportTest, RefusesTheSourceUnderAnyNameEvenWhenCancelled)
{
    installTool("printf gone > \"$destination\"\n");
    fs::create_hard_link(request.input, request.output);
    m_stop.request_stop();
    EXPECT_EQ(failure(m_stop.get_token()),
              "“" + request.output.string() + "” is the source itself, which is never overwritten.");
    EXPECT_EQ(contentOf(request.input), "a clip");
    EXPECT_FALSE(hasRun());
}

TEST_F(FileExportTest, ChangesNoFileWhenTheToolIsMissing)
{
    if (fs::exists("/usr/local/bin/ffmpeg") || fs::exists("/opt/homebrew/bin/ffmpeg"))
        GTEST_SKIP() << "this system has the tool in a folder that the search includes";
    writeOld();
    EXPECT_EQ(failure(), MediaToolError::toolMissing("ffmpeg").what());
    EXPECT_EQ(contentOf(request.output), "old");
    EXPECT_EQ(names(), Names{"out.mp4"});
}

TEST_F(FileExportTest, IsNoSuccessWhenItsFileWasRemovedOrReplaced)
{
    const char* const changes[] = {"rm \"$destination\"\n",
                                   "printf theirs > other\nmv other \"$destination\"\n"};
    for (const char* const change : changes) {
        installTool("printf whole > \"$destination\"\n" + std::string(change));
        EXPECT_EQ(failure(),
                  "“" + request.output.string() +
                      "” was removed or replaced by another program during the export. Export again.");
    }
    EXPECT_EQ(contentOf(request.output), "theirs");
}

TEST_F(FileExportTest, LeavesAFileOfAnotherProgramWhenCancelled)
{
    installTool("printf theirs > other\nmv other \"$destination\"\nexec '" + testChild().string() +
                "' patient pid 1\n");
    Awaited<fs::path> exported(FileExport::replace(request, atOnce, m_stop.get_token()));
    ASSERT_TRUE(eventually([this] { return isWaiting(); }));
    m_stop.request_stop();
    EXPECT_THROW(exported.result(), CancellationError);
    EXPECT_EQ(contentOf(request.output), "theirs");
}

TEST_F(FileExportTest, FailsWhenTheFileIsShorterThanTheRange)
{
    writeOld();
    installTool("printf whole > \"$destination\"\n");
    installProbe("8.0", "packet,0,8.0,8.0,0.1");
    EXPECT_EQ(failure(), "The export did not become what was asked for: it lasts 8.00 s instead of 20.00 s. "
                         "The source may be damaged, or its picture ends there: choose an earlier end.");
    EXPECT_EQ(contentOf(request.output), "old");
}

TEST_F(FileExportTest, SucceedsWhenThePictureOfTheSourceEndsBeforeItsSound)
{
    installTool("printf whole > \"$destination\"\n");
    installProbe("8.0", "packet,0,7.9,7.9,0.1\npacket,1,19.9,19.9,0.1");
    EXPECT_EQ(failure(), "");
    EXPECT_EQ(contentOf(request.output), "whole");
}

TEST_F(FileExportTest, NamesAFolderThatWasMovedAway)
{
    installTool("printf whole > \"$destination\"\nmv \"${destination%/*}\" \"${destination%/*}.moved\"\n");
    EXPECT_EQ(failure(), "The folder “" + folder.string() +
                             "” was moved or removed during the export. Export again into another folder.");
}

TEST_F(FileExportTest, KeepsNothingWhenASignalEndsAToolAndTheProgram)
{
    sigset_t before{};
    ::pthread_sigmask(SIG_SETMASK, nullptr, &before);
    {
        const TerminationSignals signals;
        installTool("printf whole > \"$destination\"\n");
        // Ctrl+C reaches both. The stop request of the program comes later.
        m_directory.writeExecutable("third_party/ffmpeg/bin/ffprobe",
                                    "#!/bin/sh\nkill -INT $PPID\nkill -INT $$\n");
        EXPECT_NE(failure(), "");
        EXPECT_EQ(names(), Names());
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST_F(FileExportTest, LooksAtAndRemovesItsFileOnAnotherThread)
{
    static std::mutex mutex;
    static std::vector<std::thread::id> threads;
    threads.clear();
    ScopedSystemCalls calls;
    calls->fstatat = [](int directory, const char* path, struct stat* found, int flags) {
        const std::lock_guard lock(mutex);
        threads.push_back(std::this_thread::get_id());
        return ::fstatat(directory, path, found, flags);
    };
    installTool("exit 1\n");
    EXPECT_NE(failure(), "");
    EXPECT_EQ(names(), Names());
    EXPECT_EQ(threads.size(), 2U) << "to explain the failure, and to remove the empty file";
    EXPECT_EQ(std::ranges::count(threads, std::this_thread::get_id()), 0);
}

} // namespace stackreel
