#pragma once

#include "tests/support/TemporaryDirectory.h"

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel
{

/// The result of a run of the command line: the exit status and the printed text.
struct CliResult {
    int status = -1; ///< exit status; 1000 plus the signal's number after a signal
    std::string output;
    std::string error;
};

/// The conditions that a run starts in.
struct CliEnvironment {
    std::string output = "";       ///< a path for standard output, or "closed"; a captured file if empty
    bool onTerminal = false;       ///< standard error is a terminal, which is also the controlling terminal
    std::vector<int> ignored = {}; ///< signals that are set to be ignored before the program starts
    int processes = 0; ///< the maximum number of processes and threads of the program; 0 for no limit
};

/// A running `stackreel-cli` whose output a test can read and to which it can send signals. The destructor
/// kills it.
class RunningCli
{
public:
    RunningCli(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::filesystem::path& directory, const CliEnvironment& environment);
    ~RunningCli();
    RunningCli(const RunningCli&) = delete;
    RunningCli& operator=(const RunningCli&) = delete;

    void signal(int number) const;
    /// Writes keys to the terminal.
    void type(std::string_view keys) const;
    /// Closes the terminal, as closing its window does. The program and its children receive SIGHUP.
    void closeTerminal();
    /// The text that the terminal has received so far.
    const std::string& screen();
    /// What the program has written to standard error so far, if that is not a terminal.
    std::string errorSoFar() const { return contentOf(m_captured / "stderr"); }
    bool hasEnded();
    pid_t pid() const { return m_pid; }
    /// Waits for the end. Throws when it takes too long.
    CliResult result();

private:
    [[noreturn]] void executeProgram(const std::filesystem::path& program,
                                     const std::vector<std::string>& arguments,
                                     const std::filesystem::path& directory,
                                     const CliEnvironment& environment) const;

    TemporaryDirectory m_captured;
    pid_t m_pid = -1;
    int m_terminal = -1;
    std::string m_screen;
    std::optional<int> m_status;
};

/// A copy of `stackreel-cli` with fake media tools, and a working folder. Unless the test changes it, the
/// fake ffprobe reports `clip.mov` as a landscape clip of ten seconds and any export as correct, and the fake
/// ffmpeg writes a short text as the output file.
class CliInstallation
{
public:
    CliInstallation();

    /// The working folder of the command line. It contains `clip.mov`.
    const std::filesystem::path& folder() const { return m_folder.path(); }
    /// The names of the files in that folder.
    std::vector<std::string> names() const { return m_folder.names(); }
    std::string content(const std::filesystem::path& name) const { return contentOf(m_folder / name); }
    void write(const std::filesystem::path& name, std::string_view content) const
    {
        m_folder.write(name, content);
    }

    /// Replaces a tool by a shell script. In the script, $last is the last argument, $tools is the folder of
    /// the tools, and the function `pause` waits for `resumeTool`.
    void setTool(const std::string& name, const std::string& script) const;
    void removeTool(const std::string& name) const;
    /// Replace the report of ffprobe on the source, or on the export.
    void setSourceReport(const std::string& json) const { m_tree.write("lib/stackreel/source.json", json); }
    void setExportReport(const std::string& json) const { m_tree.write("lib/stackreel/export.json", json); }
    /// The arguments of the last run of ffmpeg.
    std::vector<std::string> encoderArguments() const;

    CliResult run(const std::vector<std::string>& arguments, const CliEnvironment& environment = {}) const;
    RunningCli start(const std::vector<std::string>& arguments, const CliEnvironment& environment = {}) const;

    /// Waits until a tool's script calls `pause`, and returns its process id.
    pid_t waitForPausedTool() const;
    /// Lets a tool that waits in `pause` continue.
    void resumeTool() const { m_tree.write("lib/stackreel/go", ""); }

private:
    TemporaryDirectory m_tree;
    TemporaryDirectory m_folder;
};

/// The initial reports of the fake ffprobe on the source and on the export.
extern const char* const landscapeReport;
extern const char* const verticalReport;

} // namespace stackreel
