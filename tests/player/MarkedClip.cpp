#include "tests/player/MarkedClip.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;

constexpr int bits = 16;

fs::path folder()
{
    const fs::path path = STACKREEL_CLIP_DIRECTORY;
    fs::create_directories(path);
    return path;
}

/// Several test programs may make the same file at once, so each is written under another name and then
/// renamed.
fs::path draftOf(const fs::path& file)
{
    return file.parent_path() / (std::to_string(::getpid()) + "-" + file.filename().string());
}

std::string readAll(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

fs::path writeAll(const fs::path& file, const std::string& content)
{
    const fs::path draft = draftOf(file);
    std::ofstream(draft, std::ios::binary) << content;
    fs::rename(draft, file);
    return file;
}

std::string commandFor(const MarkedClip& clip, const fs::path& target)
{
    const std::string rate = std::to_string(clip.rate);
    std::string command = "ffmpeg -v error -nostdin -y -f lavfi -i color=black:s=" + clip.size + ":r=" + rate;
    if (clip.sound)
        command += " -f lavfi -i \"" + clip.tone + "\" -shortest -c:a aac";
    command += " -vf \"geq=lum='" + clip.luma + "':cb=128:cr=128";
    if (clip.variable)
        command += ",settb=1/90000,setpts='(N-2/3*eq(mod(N\\,3)\\,1))/(" + rate + "*TB)'";
    if (clip.delay > 0)
        command += ",setpts=PTS+" + std::to_string(clip.delay) + "/TB";
    command += "\" -fps_mode passthrough -enc_time_base 1:90000 -video_track_timescale 90000 -frames:v " +
               std::to_string(clip.frames);
    command += " -c:v libx264 -preset veryfast -bf 2 -pix_fmt yuv420p -x264-params scenecut=0:keyint=" +
               std::to_string(clip.keyInterval) + ":min-keyint=" + std::to_string(clip.keyInterval) + " ";
    return command + clip.output + " \"" + target.string() + "\"";
}

} // namespace

double MarkedClip::startOf(int number) const
{
    const double shift = variable && number % 3 == 1 ? 2.0 / 3 : 0;
    return (number - shift) / rate;
}

fs::path MarkedClip::file() const
{
    const fs::path target = folder() / name;
    if (fs::exists(target))
        return target;
    const fs::path draft = draftOf(target);
    if (std::system(commandFor(*this, draft).c_str()) != 0)
        throw std::runtime_error("the clip " + name + " cannot be made");
    fs::rename(draft, target);
    return target;
}

fs::path truncatedCopy(const fs::path& file, const std::string& name, std::uintmax_t bytes)
{
    return writeAll(folder() / name, readAll(file).substr(0, bytes));
}

fs::path corruptedCopy(const fs::path& file, const std::string& name, std::uintmax_t from,
                       std::uintmax_t bytes)
{
    std::string content = readAll(file);
    for (std::uintmax_t i = from; i < from + bytes && i < content.size(); ++i)
        content[i] = static_cast<char>(i * 37);
    return writeAll(folder() / name, content);
}

fs::path rotatedCopy(const fs::path& file, const std::string& name, const std::array<int, 4>& abcd)
{
    constexpr std::size_t matrixInHeader = 4 + 40; // bytes from the box's type to the matrix
    std::string content = readAll(file);
    const std::size_t matrix = content.find("tkhd") + matrixInHeader;
    for (std::size_t i = 0; i < abcd.size(); ++i) {
        // 16.16 fixed point, three columns a row.
        const std::size_t at = matrix + (i / 2 * 3 + i % 2) * 4;
        const char high = static_cast<char>(abcd[i] < 0 ? 0xff : 0);
        content.replace(at, 4, {high, static_cast<char>(abcd[i]), 0, 0});
    }
    return writeAll(folder() / name, content);
}

fs::path renamedCodec(const fs::path& file, const std::string& name, const std::string& from,
                      const std::string& to)
{
    std::string content = readAll(file);
    for (std::size_t at = content.find(from); at != std::string::npos; at = content.find(from, at))
        content.replace(at, from.size(), to);
    return writeAll(folder() / name, content);
}

fs::path plainFile(const std::string& name, const std::string& content)
{
    return writeAll(folder() / name, content);
}

int numberIn(const VideoFrame& frame)
{
    int number = 0;
    for (int bit = 0; bit < bits; ++bit) {
        const int column = (2 * bit + 1) * frame.width / (2 * bits);
        const std::byte* pixel = frame.pixels + frame.height / 2 * frame.bytesPerLine + column * 4;
        if (std::to_integer<int>(pixel[1]) > 127)
            number |= 1 << bit;
    }
    return number;
}

} // namespace stackreel
