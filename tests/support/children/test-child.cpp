// A child process for tests. The first argument selects what it does:
//   arguments …          prints the arguments that follow, each followed by a NUL
//   descriptors          prints the numbers of its open descriptors, one per line
//   die N                dies by signal N
//   echo                 copies standard input to standard output
//   exit N               prints a line to each output and exits with status N
//   flood N              writes N MiB to each of its outputs, in turns
//   patient FILE [N]     writes its process id to FILE and the number of received SIGTERM to FILE.requests;
//                        ends by the Nth SIGTERM (default: never), or by SIGUSR1 with status 0
//   signals              prints the signal lines of its status
//   surroundings NAME    prints its working directory and the environment variable NAME
//   touch FILE           creates FILE

#include <climits>

#include <dirent.h>
#include <fcntl.h>
#include <stdio.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace
{

using Words = std::vector<std::string>;

void put(int descriptor, const std::string& bytes)
{
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t count = ::write(descriptor, bytes.data() + done, bytes.size() - done);
        if (count < 0)
            std::exit(99);
        done += static_cast<std::size_t>(count);
    }
}

/// Writes a file and renames it, so that a reader never sees a partial file.
void writeFile(const std::string& file, const std::string& content)
{
    const std::string half = file + ".half";
    const int descriptor = ::open(half.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    put(descriptor, content);
    ::close(descriptor);
    ::rename(half.c_str(), file.c_str());
}

int arguments(const Words& words)
{
    for (const std::string& word : words)
        put(STDOUT_FILENO, word + '\0');
    return 0;
}

int descriptors(const Words&)
{
    std::set<int> numbers;
    DIR* directory = ::opendir("/proc/self/fd");
    while (const dirent* entry = ::readdir(directory))
        if (entry->d_name[0] != '.')
            numbers.insert(std::atoi(entry->d_name));
    numbers.erase(::dirfd(directory));
    for (const int number : numbers)
        put(STDOUT_FILENO, std::to_string(number) + "\n");
    return 0;
}

int die(const Words& words)
{
    const rlimit none = {};
    ::setrlimit(RLIMIT_CORE, &none);
    ::raise(std::atoi(words.at(0).c_str()));
    return 98;
}

int echo(const Words&)
{
    char block[4096];
    while (true) {
        const ssize_t count = ::read(STDIN_FILENO, block, sizeof block);
        if (count <= 0)
            return count < 0 ? 97 : 0;
        put(STDOUT_FILENO, {block, static_cast<std::size_t>(count)});
    }
}

int exitWith(const Words& words)
{
    put(STDOUT_FILENO, "out of " + words.at(0) + "\n");
    put(STDERR_FILENO, "error of " + words.at(0) + "\n");
    return std::atoi(words.at(0).c_str());
}

int flood(const Words& words)
{
    constexpr int blocksPerMebibyte = 16;
    for (int block = 0; block < std::atoi(words.at(0).c_str()) * blocksPerMebibyte; ++block) {
        const auto letter = static_cast<char>('a' + block % 26);
        put(STDOUT_FILENO, std::string(64 * 1024, letter));
        put(STDERR_FILENO, std::string(64 * 1024, static_cast<char>(std::toupper(letter))));
    }
    return 0;
}

int patient(const Words& words)
{
    sigset_t awaited;
    sigemptyset(&awaited);
    sigaddset(&awaited, SIGTERM);
    sigaddset(&awaited, SIGUSR1);
    ::sigprocmask(SIG_BLOCK, &awaited, nullptr);
    writeFile(words.at(0), std::to_string(::getpid()));
    const int last = words.size() > 1 ? std::atoi(words[1].c_str()) : INT_MAX;
    for (int requests = 0; requests < last;) {
        int signal = 0;
        ::sigwait(&awaited, &signal);
        if (signal == SIGUSR1)
            return 0;
        ++requests;
        writeFile(words[0] + ".requests", std::to_string(requests));
    }
    ::signal(SIGTERM, SIG_DFL);
    ::raise(SIGTERM);
    ::sigprocmask(SIG_UNBLOCK, &awaited, nullptr);
    return 96;
}

int signals(const Words&)
{
    char line[256];
    FILE* status = ::fopen("/proc/self/status", "re");
    while (::fgets(line, sizeof line, status) != nullptr)
        if (std::strncmp(line, "Sig", 3) == 0)
            put(STDOUT_FILENO, line);
    ::fclose(status);
    return 0;
}

int surroundings(const Words& words)
{
    char directory[PATH_MAX];
    const char* value = ::getenv(words.at(0).c_str());
    put(STDOUT_FILENO, std::string(::getcwd(directory, sizeof directory)) + '\0');
    put(STDOUT_FILENO, std::string(value != nullptr ? value : "(none)") + '\0');
    return 0;
}

int touch(const Words& words)
{
    writeFile(words.at(0), "");
    return 0;
}

} // namespace

int main(int count, char** all)
{
    const std::map<std::string, int (*)(const Words&)> modes = {
        {"arguments", arguments}, {"descriptors", descriptors}, {"die", die},
        {"echo", echo},           {"exit", exitWith},           {"flood", flood},
        {"patient", patient},     {"signals", signals},         {"surroundings", surroundings},
        {"touch", touch},
    };
    const Words words(all + std::min(count, 2), all + count);
    const auto mode = modes.find(count > 1 ? all[1] : "");
    return mode == modes.end() ? 95 : mode->second(words);
}
