#include "system/GraphicsDevice.h"

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

struct Row {
    std::filesystem::path device;
    bool isGraphicsDevice;
};

TEST(GraphicsDeviceTest, IsARenderDeviceAndNotJustAScreen)
{
    for (const Row& row : {Row{"null", false}, Row{"dri/card0", false}, Row{"dri/by-path/x", false},
                           Row{"dri/renderD128", true}, Row{"nvidiactl", true}, Row{"dxg", true}}) {
        const TemporaryDirectory devices;
        std::filesystem::create_directories((devices / row.device).parent_path());
        std::filesystem::create_directory(devices / row.device);
        EXPECT_EQ(hasGraphicsDevice(devices.path()), row.isGraphicsDevice) << row.device;
    }
}

TEST(GraphicsDeviceTest, IsMissingWhenThereAreNoDevices)
{
    const TemporaryDirectory folder;
    EXPECT_FALSE(hasGraphicsDevice(folder / "gone"));
}

} // namespace

} // namespace stackreel
