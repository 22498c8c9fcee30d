#include "tests/ffmpeg-shim/InstalledFFmpegs.h"

#include "tests/ffmpeg-shim/Invocation.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace stackreel::shim
{

namespace
{

namespace fs = std::filesystem;

std::vector<fs::path> roots()
{
    const char* chosen = std::getenv("STACKREEL_ROOTS");
    std::vector<fs::path> found;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(chosen ? chosen : STACKREEL_DEFAULT_ROOTS, none))
        if (fs::exists(entry.path() / "usr/bin/ffmpeg", none))
            found.push_back(entry.path());
    std::ranges::sort(found);
    return found;
}

/// A shell script that runs a program of another Debian root by `exec`. The link `root` beside the script
/// leads to that root.
std::string wrapper(const fs::path& root, const std::string& program)
{
    const std::string text = "#!/bin/sh\nroot=${0%/*}/root\n";
    const std::string file = "\"$root/usr/bin/" + program + "\" \"$@\"\n";
    if (!fs::exists(root / "lib64/ld-linux-x86-64.so.2"))
        return text + "exec " + file;
    return text +
           "folder=$root/usr/lib/x86_64-linux-gnu\n"
           "libraries=$folder:$folder/pulseaudio:$folder/blas:$folder/lapack\n"
           "exec \"$root/lib64/ld-linux-x86-64.so.2\" --library-path \"$libraries\" " +
           file;
}

} // namespace

InstalledFFmpegs::InstalledFFmpegs()
{
    const std::string systemPath = std::getenv("PATH");
    add(systemPath);
    for (const fs::path& root : roots()) {
        const fs::path folder = root.filename();
        for (const char* program : {"ffmpeg", "ffprobe"})
            m_wrappers.writeExecutable(folder / program, wrapper(root, program));
        fs::create_directory_symlink(fs::absolute(root), m_wrappers / folder / "root");
        add((m_wrappers / folder).string() + ":" + systemPath);
    }
}

void InstalledFFmpegs::add(const std::string& path)
{
    const Outcome outcome = run({shimProgram("ffmpeg"), {"-version"}, {{"PATH", path}}});
    const std::string line = outcome.output.substr(0, outcome.output.find(" Copyright"));
    if (outcome.exitStatus() != 0)
        throw std::runtime_error("FFmpeg does not run with PATH=" + path + "\n" + outcome.errors);
    m_all.push_back({line, path});
}

std::string InstalledFFmpegs::names() const
{
    std::string text;
    for (const InstalledFFmpeg& each : m_all)
        text += (text.empty() ? "" : ", ") + each.version;
    return text;
}

} // namespace stackreel::shim
