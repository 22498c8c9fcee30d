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

/// The exit status of a run of the command line, and what it printed.
struct CliResult {
    int status = -1; ///< exit status; 1000 plus the signal's number after a signal
    std::string output;
    std::string error;
};

/// The conditions that a run starts in.
struct CliEnvironment {
    std::string output = "";       ///< a path for standard output, or "closed"; a captured file if empty
    bool onTerminal = false;       ///< standard error is a terminal, which also controls the run
    std::vector<int> ignored = {}; ///< signals that the run ignores from its start
};

/// A running command line, which can be observed and signalled. The destructor kills it.
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
    /// The text that the terminal has received so far.
    const std::string& screen();
    /// The standard error so far, without a terminal.
    std::string errorSoFar() const { return contentOf(m_captured / "stderr"); }
    bool hasEnded();
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

/// A copy of the command line with fake media tools, and a folder to work in. At first ffprobe reports
/// `clip.mov` as a landscape clip of ten seconds and any export as correct, and ffmpeg writes a short text.
class CliInstallation
{
public:
    CliInstallation();

    /// The folder the command line runs in, which holds `clip.mov`.
    const std::filesystem::path& folder() const { return m_folder.path(); }
    /// The names of the files in that folder.
    std::vector<std::string> names() const { return m_folder.names(); }
    std::string content(const std::filesystem::path& name) const { return contentOf(m_folder / name); }
    void write(const std::filesystem::path& name, std::string_view content) const
    {
        m_folder.write(name, content);
    }

    /// Replaces a tool by a shell script. $last is its last argument, $tools the folder of the tools, and
    /// `pause` waits for `resumeTool`.
    void setTool(const std::string& name, const std::string& script) const;
    void removeTool(const std::string& name) const;
    /// Replaces the report of ffprobe on the source, or on the export.
    void setSourceReport(const std::string& json) const { m_tree.write("lib/stackreel/source.json", json); }
    void setExportReport(const std::string& json) const { m_tree.write("lib/stackreel/export.json", json); }
    /// The arguments of the last run of ffmpeg.
    std::vector<std::string> encoderArguments() const;

    CliResult run(const std::vector<std::string>& arguments, const CliEnvironment& environment = {}) const;
    RunningCli start(const std::vector<std::string>& arguments, const CliEnvironment& environment = {}) const;

    /// Waits until a tool's script calls `pause`, and returns its process id.
    pid_t waitForPausedTool() const;
    /// Ends the pause of a tool.
    void resumeTool() const { m_tree.write("lib/stackreel/go", ""); }

private:
    TemporaryDirectory m_tree;
    TemporaryDirectory m_folder;
};

/// The reports of the fakes.
extern const char* const landscapeReport;
extern const char* const verticalReport;

} // namespace stackreel
