#include "model/ExportedFile.h"

#include "media/MediaProbe.h"
#include "media/MediaToolError.h"
#include "media/ToolFailure.h"
#include "model/ExportError.h"

#include <algorithm>

namespace stackreel
{

namespace
{

bool isRotated(const ProbeStream& video)
{
    if (!video.sideDataList)
        return false;
    return std::any_of(video.sideDataList->begin(), video.sideDataList->end(),
                       [](const ProbeSideData& entry) { return entry.rotation.value_or(0) != 0; });
}

std::string sizeText(std::int64_t width, std::int64_t height)
{
    return std::to_string(width) + " × " + std::to_string(height);
}

} // namespace

void ExportedFile::fail(const std::string& difference)
{
    throw ExportError("The export did not become what was asked for: " + difference);
}

void ExportedFile::requireFile(const std::filesystem::path& file)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error) || std::filesystem::file_size(file, error) == 0)
        throw ExportError("FFmpeg ended without an error but wrote no file.");
}

QCoro::Task<ProbeDocument> ExportedFile::report(std::filesystem::path file, std::stop_token stop)
{
    try {
        co_return co_await MediaProbe::report(std::move(file), stop);
    } catch (const MediaToolError& problem) {
        const auto* failed = std::get_if<MediaToolError::ProcessFailed>(&problem.value());
        if (failed == nullptr || namesSignal(*failed))
            throw;
    } catch (const DecodingError&) {
        // Reported below.
    }
    throw ExportError("FFmpeg ended without an error but wrote a file that cannot be read.");
}

void ExportedFile::requirePicture(const ProbeDocument& report, PixelSize size)
{
    const ProbeStream* video = report.firstStream("video");
    if (video == nullptr)
        fail("it has no picture. The source has none in the chosen range.");
    if (video->codecName != "h264")
        fail("its picture is coded as " + video->codecName.value_or("something unknown") + ", not h264.");
    if (video->width != size.width || video->height != size.height)
        fail("its picture is " + sizeText(video->width.value_or(0), video->height.value_or(0)) + ", not " +
             sizeText(size.width, size.height) + ".");
    if (isRotated(*video))
        fail("its picture is marked as turned.");
}

} // namespace stackreel
