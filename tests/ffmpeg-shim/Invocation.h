#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace stackreel::shim
{

/// The result of a run of a program: the status that `waitpid` reports, and the output.
struct Outcome {
    pid_t process = 0;
    int waitStatus = 0;
    std::string output;
    std::string errors;

    /// The exit status; -1 if a signal ended the program.
    int exitStatus() const;
    /// The number of the signal that ended the program; 0 if it exited.
    int endingSignal() const;
};

/// A program and the arguments, environment and input to run it with.
struct Invocation {
    std::filesystem::path program;
    std::vector<std::string> arguments;
    /// Environment variables that differ from those of this process. Those whose names begin with
    /// STACKREEL_SHIM_VISITED_ are always unset, unless they are among them.
    std::vector<std::pair<std::string, std::string>> variables;
    /// The file for standard input.
    std::filesystem::path input = "/dev/null";
};

/// A running program whose outputs are written to files. If `wait` was not called, the destructor kills and
/// reaps it.
class RunningProgram
{
public:
    RunningProgram(const Invocation& invocation, const std::filesystem::path& outputFile,
                   const std::filesystem::path& errorFile);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    pid_t process() const { return m_process; }
    /// Waits until the program has ended. Call it once.
    Outcome wait();

private:
    pid_t m_process = 0;
    bool m_collected = false;
    std::filesystem::path m_outputFile;
    std::filesystem::path m_errorFile;
};

/// Runs a program to its end.
Outcome run(const Invocation& invocation);

/// The path of the program "ffmpeg" or "ffprobe" in this project's resource directory.
std::filesystem::path shimProgram(const std::string& name);

} // namespace stackreel::shim
