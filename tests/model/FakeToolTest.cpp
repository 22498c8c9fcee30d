#include "tests/model/FakeToolTest.h"

#include "system/Bundle.h"
#include "tests/support/ChildReport.h"
#include "tests/support/Descriptors.h"

#include <unistd.h>

namespace stackreel
{

ExportRequest landscapeRequest(const std::filesystem::path& input, const std::filesystem::path& output)
{
    ExportRequest request;
    request.input = input;
    request.output = output;
    request.media.width = 1920;
    request.media.height = 1080;
    request.media.duration = 20;
    request.top = {.x = 0.04, .y = 0.14, .width = 0.44, .height = 0.72};
    request.bottom = {.x = 0.52, .y = 0.14, .width = 0.44, .height = 0.72};
    request.trimEnd = 20;
    return request;
}

FakeToolTest::FakeToolTest()
    : m_working(m_directory.path()), m_temporaryPlace("TMPDIR", m_temporary.path().string())
{
    EXPECT_EQ(Bundle::resourceDirectory(), std::nullopt) << "the tools there would be run";
}

void FakeToolTest::TearDown()
{
    EXPECT_FALSE(hasChildren());
    for (const std::string& name : m_temporary.names())
        EXPECT_EQ(name, "Stackreel-" + std::to_string(::geteuid())) << "was left in the temporary folder";
}

const char* const exportReport =
    R"({"streams": [{"codec_type": "video", "codec_name": "h264", "width": 1080, "height": 1920,
                      "duration": "20.0"}]})";

void FakeToolTest::installTool(const std::string& script) const
{
    // The check of the pictures afterwards finds none to compare.
    const std::string start = "#!/bin/sh\n[ \"$1\" != -nostdin ] || exit 0\nprintf '%s\\0' \"$@\" > "
                              "arguments\nfor destination; do :; done\n";
    m_directory.writeExecutable("third_party/ffmpeg/bin/ffmpeg", start + script);
    if (!std::filesystem::exists(m_directory / "third_party/ffmpeg/bin/ffprobe"))
        m_directory.writeExecutable("third_party/ffmpeg/bin/ffprobe",
                                    "#!/bin/sh\necho '" + std::string(exportReport) + "'\n");
}

void FakeToolTest::installWaitingTool() const
{
    installTool("printf half > \"$destination\"\nexec '" + testChild().string() + "' patient pid 1\n");
}

std::vector<std::string> FakeToolTest::arguments() const
{
    return pieces(contentOf(m_directory / "arguments"), '\0');
}

} // namespace stackreel
