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

/// How a run of the command line ended, and what it printed.
struct CliResult {
    int status = -1; ///< exit status; 1000 and the signal's number for one that a signal ended
    std::string output;
    std::string error;
};

/// What is special about a run.
struct CliSurroundings {
    std::string output = "";       ///< what standard output is instead of a file: a path, or "closed"
    bool onTerminal = false;       ///< standard error, and the terminal the run is in control of
    std::vector<int> ignored = {}; ///< signals that the run is to ignore from its start
};

/// A run of the command line that can be watched and signalled. Killed with the object.
class RunningCli
{
public:
    RunningCli(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::filesystem::path& directory, const CliSurroundings& surroundings);
    ~RunningCli();
    RunningCli(const RunningCli&) = delete;
    RunningCli& operator=(const RunningCli&) = delete;

    void signal(int number) const;
    /// Types on the terminal.
    void type(std::string_view keys) const;
    /// What the terminal has been sent so far.
    const std::string& screen();
    /// What was printed to standard error so far, where that is no terminal.
    std::string errorSoFar() const { return contentOf(m_captured / "stderr"); }
    bool hasEnded();
    /// Waits for the end, with a ceiling.
    CliResult result();

private:
    [[noreturn]] void becomeProgram(const std::filesystem::path& program,
                                    const std::vector<std::string>& arguments,
                                    const std::filesystem::path& directory,
                                    const CliSurroundings& surroundings) const;

    TemporaryDirectory m_captured;
    pid_t m_pid = -1;
    int m_terminal = -1;
    std::string m_screen;
    std::optional<int> m_status;
};

/// A copy of the command line with media tools of the test's own, and an empty folder to work in. The tools
/// at first are fakes that take `clip.mov` for a landscape clip of ten seconds, and render to the
/// satisfaction of the probe.
class CliInstallation
{
public:
    CliInstallation();

    /// The folder the command line runs in, which holds `clip.mov`.
    const std::filesystem::path& folder() const { return m_folder.path(); }
    /// What lies in that folder.
    std::vector<std::string> names() const { return m_folder.names(); }
    std::string content(const std::filesystem::path& name) const { return contentOf(m_folder / name); }
    void write(const std::filesystem::path& name, std::string_view content) const
    {
        m_folder.write(name, content);
    }

    /// Replaces a tool by a shell script, which finds its last argument in $last and the folder of the tools
    /// in $tools.
    void setTool(const std::string& name, const std::string& script) const;
    void removeTool(const std::string& name) const;
    /// Replaces what ffprobe reports of the source and of the export.
    void setSourceReport(const std::string& json) const { m_tree.write("lib/stackreel/source.json", json); }
    void setExportReport(const std::string& json) const { m_tree.write("lib/stackreel/export.json", json); }
    /// The arguments the last run of ffmpeg was given.
    std::vector<std::string> encoderArguments() const;

    CliResult run(const std::vector<std::string>& arguments, const CliSurroundings& surroundings = {}) const;
    RunningCli start(const std::vector<std::string>& arguments,
                     const CliSurroundings& surroundings = {}) const;

    /// Waits until a tool whose script calls `stand` does so; gives the process id it runs with.
    pid_t waitForStandingTool() const;
    /// Has such a tool go on.
    void letGo() const { m_tree.write("lib/stackreel/go", ""); }

private:
    TemporaryDirectory m_tree;
    TemporaryDirectory m_folder;
};

/// The reports of the fakes.
extern const char* const landscapeReport;
extern const char* const verticalReport;

} // namespace stackreel
