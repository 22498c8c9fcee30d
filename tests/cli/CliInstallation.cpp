#include "tests/cli/CliInstallation.h"

#include "tests/support/Awaited.h"
#include "tests/support/ChildReport.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <system_error>

namespace stackreel
{

namespace
{

constexpr const char* scriptStart = R"(#!/bin/sh
# The check of the pictures after an export finds none to compare.
[ "$1" != -nostdin ] || exit 0
for last; do :; done
tools="${0%/*}"
# Writes its process id for the test and waits for resumeTool or a signal. The rename makes the file appear whole.
pause() { echo $$ >"$tools/paused.part"; mv "$tools/paused.part" "$tools/paused"
  until [ -e "$tools/go" ]; do sleep 0.02; done; }
)";

constexpr const char* fakeProbe = R"(case "$last" in
*/.stackreel-*) cat "$tools/export.json" ;;
*) cat "$tools/source.json" ;;
esac
)";

constexpr const char* fakeEncoder = R"(printf '%s\0' "$@" >"$tools/arguments"
printf rendered >"$last"
)";

void redirect(int descriptor, const std::filesystem::path& file)
{
    const int opened = ::open(file.c_str(), O_WRONLY | O_CREAT, 0600);
    ::dup2(opened, descriptor);
    ::close(opened);
}

/// Limits the number of processes of the current user. If this process is root, it first changes to a user
/// that has no other processes.
void limitProcesses(int count)
{
    const auto user = static_cast<uid_t>(100000 + ::getpid());
    if (::getuid() == 0 && ::setresuid(user, user, user) != 0)
        ::_exit(126);
    const rlimit limit = {.rlim_cur = static_cast<rlim_t>(count), .rlim_max = static_cast<rlim_t>(count)};
    ::setrlimit(RLIMIT_NPROC, &limit);
    // The leak check of a sanitizer would need a process of its own.
    ::setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
}

} // namespace

const char* const landscapeReport = R"({"streams": [
  {"codec_type": "video", "codec_name": "h264", "width": 1920, "height": 1080, "duration": "10.0"},
  {"codec_type": "audio", "codec_name": "aac", "duration": "10.0"}], "format": {"duration": "10.0"}})";

const char* const verticalReport = R"({"streams": [
  {"codec_type": "video", "codec_name": "h264", "width": 1080, "height": 1920, "duration": "10.0"},
  {"codec_type": "audio", "codec_name": "aac", "duration": "10.0"}], "format": {"duration": "10.0"}})";

RunningCli::RunningCli(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                       const std::filesystem::path& directory, const CliEnvironment& environment)
{
    const winsize size = {.ws_row = 24, .ws_col = 60, .ws_xpixel = 0, .ws_ypixel = 0};
    m_pid = environment.onTerminal ? ::forkpty(&m_terminal, nullptr, nullptr, &size) : ::fork();
    if (m_pid < 0)
        throw std::system_error(errno, std::system_category(), "fork");
    if (m_pid == 0)
        executeProgram(program, arguments, directory, environment);
    if (m_terminal >= 0)
        ::fcntl(m_terminal, F_SETFL, O_NONBLOCK);
}

RunningCli::~RunningCli()
{
    if (!hasEnded()) {
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }
    if (m_terminal >= 0)
        ::close(m_terminal);
}

void RunningCli::executeProgram(const std::filesystem::path& program,
                                const std::vector<std::string>& arguments,
                                const std::filesystem::path& directory,
                                const CliEnvironment& environment) const
{
    redirect(STDOUT_FILENO, environment.output.starts_with('/') ? std::filesystem::path(environment.output)
                                                                : m_captured / "stdout");
    if (environment.output == "closed")
        ::close(STDOUT_FILENO);
    if (!environment.onTerminal)
        redirect(STDERR_FILENO, m_captured / "stderr");
    for (const int number : environment.ignored)
        ::signal(number, SIG_IGN);
    if (::chdir(directory.c_str()) != 0)
        ::_exit(127);
    if (environment.processes > 0)
        limitProcesses(environment.processes);

    std::vector<std::string> words = {program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    ::execv(program.c_str(), pointers.data());
    ::_exit(127);
}

void RunningCli::signal(int number) const
{
    ::kill(m_pid, number);
}

void RunningCli::type(std::string_view keys) const
{
    if (::write(m_terminal, keys.data(), keys.size()) != static_cast<ssize_t>(keys.size()))
        throw std::system_error(errno, std::system_category(), "type");
}

void RunningCli::closeTerminal()
{
    ::close(m_terminal);
    m_terminal = -1;
}

const std::string& RunningCli::screen()
{
    std::array<char, 4096> block{};
    for (ssize_t count = 0; (count = ::read(m_terminal, block.data(), block.size())) > 0;)
        m_screen.append(block.data(), static_cast<std::size_t>(count));
    return m_screen;
}

bool RunningCli::hasEnded()
{
    int status = 0;
    if (!m_status && ::waitpid(m_pid, &status, WNOHANG) == m_pid)
        m_status = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
    return m_status.has_value();
}

CliResult RunningCli::result()
{
    // Keep reading from the terminal: otherwise its buffer fills up and the program blocks.
    const bool ended = eventually([this] {
        if (m_terminal >= 0)
            screen();
        return hasEnded();
    });
    if (!ended)
        throw std::logic_error("the command line has not ended in time");
    return {.status = *m_status,
            .output = contentOf(m_captured / "stdout"),
            .error = m_terminal >= 0 ? screen() : contentOf(m_captured / "stderr")};
}

CliInstallation::CliInstallation()
{
    // Other users need access to the folder, because `limitProcesses` may change the user.
    std::filesystem::permissions(m_tree.path(), std::filesystem::perms(0755));
    std::filesystem::create_directories(m_tree / "bin");
    std::filesystem::copy_file(STACKREEL_CLI, m_tree / "bin/stackreel-cli");
    setTool("ffprobe", fakeProbe);
    setTool("ffmpeg", fakeEncoder);
    setSourceReport(landscapeReport);
    setExportReport(verticalReport);
    write("clip.mov", "a clip");
}

void CliInstallation::setTool(const std::string& name, const std::string& script) const
{
    const auto file = m_tree.writeExecutable("lib/stackreel/" + name, scriptStart + script);
    std::filesystem::permissions(file, std::filesystem::perms(0755));
}

void CliInstallation::removeTool(const std::string& name) const
{
    std::filesystem::remove(m_tree / "lib/stackreel" / name);
}

std::vector<std::string> CliInstallation::encoderArguments() const
{
    return pieces(contentOf(m_tree / "lib/stackreel/arguments"), '\0');
}

CliResult CliInstallation::run(const std::vector<std::string>& arguments,
                               const CliEnvironment& environment) const
{
    return start(arguments, environment).result();
}

RunningCli CliInstallation::start(const std::vector<std::string>& arguments,
                                  const CliEnvironment& environment) const
{
    return RunningCli(m_tree / "bin/stackreel-cli", arguments, folder(), environment);
}

pid_t CliInstallation::waitForPausedTool() const
{
    const auto file = m_tree / "lib/stackreel/paused";
    if (!eventually([&] { return std::filesystem::exists(file); }))
        throw std::logic_error("the tool has not paused in time");
    const pid_t pid = std::stoi(contentOf(file));
    std::filesystem::remove(file);
    return pid;
}

} // namespace stackreel
