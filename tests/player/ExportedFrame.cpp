#include "tests/player/ExportedFrame.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace stackreel
{

VideoFrame exportedFrame(const std::filesystem::path& file, double seconds, int width, int height)
{
    auto pixels = std::make_shared<std::vector<char>>(static_cast<std::size_t>(width * height * 4));
    const std::string command = "ffmpeg -v error -nostdin -ss " + std::to_string(seconds) + " -i \"" +
                                file.string() + "\" -frames:v 1 -pix_fmt bgr0 -f rawvideo -";
    std::FILE* pipe = ::popen(command.c_str(), "r");
    const std::size_t read = std::fread(pixels->data(), 1, pixels->size(), pipe);
    EXPECT_EQ(read, pixels->size());
    EXPECT_EQ(::pclose(pipe), 0);
    const auto* data = reinterpret_cast<const std::byte*>(pixels->data());
    return {pixels, data, width, height, width * 4, seconds};
}

} // namespace stackreel
