#include "tests/ffmpeg-shim/Invocation.h"

#include "tests/support/TemporaryDirectory.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <system_error>

namespace stackreel::shim
{

namespace
{

/// The entries "name=value" of the program's environment.
std::vector<std::string> environmentOf(const Invocation& invocation)
{
    std::vector<std::pair<std::string, std::string>> replaced = invocation.variables;
    std::vector<std::string> entries;
    for (char** entry = environ; *entry; ++entry) {
        const std::string text = *entry;
        const std::string name = text.substr(0, text.find('='));
        const auto names = [&](const auto& variable) { return variable.first == name; };
        if (!name.starts_with("STACKREEL_SHIM_VISITED_") && std::ranges::none_of(replaced, names))
            entries.push_back(text);
    }
    for (const auto& [name, value] : replaced)
        entries.push_back(name + '=' + value);
    return entries;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

int Outcome::exitStatus() const
{
    return WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : -1;
}

int Outcome::endingSignal() const
{
    return WIFSIGNALED(waitStatus) ? WTERMSIG(waitStatus) : 0;
}

RunningProgram::RunningProgram(const Invocation& invocation, const std::filesystem::path& outputFile,
                               const std::filesystem::path& errorFile)
    : m_outputFile(outputFile), m_errorFile(errorFile)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    constexpr int writing = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, invocation.input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outputFile.c_str(), writing, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorFile.c_str(), writing, 0600);
    std::vector<std::string> arguments{invocation.program.string()};
    arguments.insert(arguments.end(), invocation.arguments.begin(), invocation.arguments.end());
    std::vector<std::string> environment = environmentOf(invocation);
    const int error = posix_spawn(&m_process, invocation.program.c_str(), &actions, nullptr,
                                  pointersTo(arguments).data(), pointersTo(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throw std::system_error(error, std::generic_category(), invocation.program.string());
}

RunningProgram::~RunningProgram()
{
    if (m_collected)
        return;
    ::kill(m_process, SIGKILL);
    ::waitpid(m_process, nullptr, 0);
}

Outcome RunningProgram::wait()
{
    Outcome outcome;
    outcome.process = m_process;
    if (::waitpid(m_process, &outcome.waitStatus, 0) != m_process)
        throw std::system_error(errno, std::generic_category(), "waitpid");
    m_collected = true;
    outcome.output = contentOf(m_outputFile);
    outcome.errors = contentOf(m_errorFile);
    return outcome;
}

Outcome run(const Invocation& invocation)
{
    const TemporaryDirectory folder;
    return RunningProgram(invocation, folder / "output", folder / "errors").wait();
}

std::filesystem::path shimProgram(const std::string& name)
{
    return std::filesystem::path(STACKREEL_SHIM_DIR) / name;
}

} // namespace stackreel::shim
