#include "system/GraphicsDevice.h"

#include <algorithm>
#include <string_view>
#include <system_error>

namespace stackreel
{

namespace
{

bool holdsRenderNode(const std::filesystem::path& folder)
{
    std::error_code none;
    const std::filesystem::directory_iterator entries(folder, none);
    return !none && std::any_of(begin(entries), end(entries), [](const auto& entry) {
        return entry.path().filename().native().starts_with("renderD");
    });
}

} // namespace

bool hasGraphicsDevice(const std::filesystem::path& devices)
{
    // The NVIDIA driver and the Windows Subsystem for Linux have device files of their own.
    constexpr std::string_view others[] = {"nvidiactl", "dxg"};
    std::error_code ignored;
    return holdsRenderNode(devices / "dri") ||
           std::any_of(std::begin(others), std::end(others), [&](std::string_view name) {
               return std::filesystem::exists(devices / name, ignored);
           });
}

} // namespace stackreel
