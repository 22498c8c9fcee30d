#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace stackreel::shim
{

/// How a program ended, as `waitpid` reports it, and what it wrote.
struct Outcome {
    pid_t process = 0;
    int waitStatus = 0;
    std::string output;
    std::string errors;

    /// The exit status; -1 for a death by a signal.
    int status() const;
    /// The signal it died by; 0 for an exit.
    int signal() const;
};

/// A program to be run with just these arguments.
struct Invocation {
    std::filesystem::path program;
    std::vector<std::string> arguments;
    /// Variables that differ from this process's environment. The one that hands down visited programs is
    /// unset.
    std::vector<std::pair<std::string, std::string>> variables;
    /// What its standard input reads.
    std::filesystem::path input = "/dev/null";
};

/// A program started with its outputs in files. The destructor kills and collects it where `wait` was not
/// called.
class RunningProgram
{
public:
    RunningProgram(const Invocation& invocation, const std::filesystem::path& outputFile,
                   const std::filesystem::path& errorFile);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    pid_t process() const { return m_process; }
    /// Waits for its end; to be called once.
    Outcome wait();

private:
    pid_t m_process = 0;
    bool m_collected = false;
    std::filesystem::path m_outputFile;
    std::filesystem::path m_errorFile;
};

/// Runs a program to its end.
Outcome run(const Invocation& invocation);

/// A program of this project's resource directory, "ffmpeg" or "ffprobe".
std::filesystem::path shimProgram(const std::string& name);

} // namespace stackreel::shim
