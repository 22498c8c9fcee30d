// Decodes any bytes as a report of ffprobe. The result has to be one of the known errors, or properties from
// which an export command can be built.

#include "framing/ExportCommandBuilder.h"
#include "media/MediaProbe.h"
#include "media/MediaToolError.h"
#include "tests/fuzz/Require.h"

#include <cmath>
#include <optional>

using namespace stackreel;

namespace
{

std::optional<MediaInfo> factsOf(std::string_view report)
{
    try {
        return MediaProbe::facts(ProbeDocument::decode(report));
    } catch (const DecodingError& error) {
        require(error.what()[0] != '\0', "a decoding error has a description");
    } catch (const MediaToolError& error) {
        require(!error.errorDescription().empty(), "an error has a description");
    }
    return std::nullopt;
}

void buildExport(const MediaInfo& media)
{
    ExportRequest request;
    request.media = media;
    request.trimEnd = media.duration;
    std::tie(request.top, request.bottom) = CropRegion::initialPair(media.displayAspect(), 1.125);
    require(ExportCommandBuilder::build(request).arguments.size() > 20, "a command is complete");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    const auto media = factsOf({reinterpret_cast<const char*>(bytes), size});
    if (!media)
        return 0;
    require(media->displayedWidth() > media->displayedHeight(), "an accepted picture is wider than high");
    require(std::isfinite(media->duration), "a duration is finite");
    constexpr std::int64_t largestPicture = 1'000'000;
    if (media->displayedHeight() > 0 && media->displayedWidth() <= largestPicture)
        buildExport(*media);
    return 0;
}
