#include "cli/ExportPlan.h"

#include "cli/AbsolutePath.h"
#include "cli/CliError.h"
#include "framing/Decimal.h"
#include "media/MediaToolError.h"
#include "model/ExportFileName.h"
#include "model/SourceFacts.h"

#include <cmath>

namespace stackreel
{

namespace
{

// FFmpeg stores widths and heights as 32-bit integers.
constexpr std::int64_t longestSide = INT32_MAX;

bool isLengthKnown(const MediaInfo& media)
{
    return std::isfinite(media.duration) && media.duration > 0;
}

bool isSide(std::int64_t side)
{
    return side > 0 && side <= longestSide;
}

bool isMp4(const std::filesystem::path& file)
{
    return SourceFacts::upperCase(file.extension().string()) == ".MP4";
}

std::filesystem::path chosenDestination(const ExportOptions& options, const std::filesystem::path& source)
{
    if (!options.destination)
        return source.parent_path() / exportFileName(source);
    // `Destination::check` has its own message for a folder.
    std::error_code error;
    if (!isMp4(*options.destination) && !std::filesystem::is_directory(*options.destination, error))
        throw UsageError("The destination “" + options.destination->string() +
                             "” has to end in .mp4, as an export is an MP4 file.",
                         "export");
    return absolutePath(*options.destination);
}

std::string tracksText(std::size_t count)
{
    if (count == 0)
        return "It has no sound.";
    return count == 1 ? "It has one only." : "It has " + std::to_string(count) + ".";
}

/// `number` counts from 1.
void chooseTrack(ExportRequest& request, const std::vector<AudioTrack>& tracks, std::int64_t number)
{
    const auto index = static_cast<std::size_t>(number - 1);
    if (index >= tracks.size())
        throw CliError("The video has no sound track " + std::to_string(number) + ". " +
                       tracksText(tracks.size()));
    if (!tracks[index].codec)
        throw CliError("The codec of sound track " + std::to_string(number) + " is unknown.");
    request.audioTrack = number - 1;
    request.media.audioCodec = tracks[index].codec;
}

} // namespace

void requireFile(const std::filesystem::path& source)
{
    std::error_code error;
    const auto found = std::filesystem::status(source, error);
    if (std::filesystem::is_fifo(found) || std::filesystem::is_socket(found) ||
        std::filesystem::is_character_file(found) || std::filesystem::is_block_file(found))
        throw CliError("“" + source.string() +
                       "” is a pipe or a device, and an export reads its source more than once. Copy it into "
                       "a file first.");
}

ExportRequest planExport(const ExportOptions& options, const MediaInfo& media,
                         const std::vector<AudioTrack>& tracks)
{
    if (!isSide(media.width) || !isSide(media.height))
        throw MediaToolError::invalidProbe();
    const Recipe& choices = options.choices;
    const double from = choices.from.value_or(0);
    if (isLengthKnown(media) && from >= media.duration)
        throw CliError("The start at " + fixedDecimal(from, 2) +
                       " s lies behind the end of the video, which lasts " + fixedDecimal(media.duration, 2) +
                       " s.");

    const auto [top, bottom] =
        CropRegion::initialPair(media.displayAspect(), panelAspect(choices.settings().size()));
    ExportRequest request;
    request.input = absolutePath(options.source);
    request.output = chosenDestination(options, request.input);
    request.media = media;
    request.top = choices.top.value_or(top);
    request.bottom = choices.bottom.value_or(bottom);
    request.settings = choices.settings();
    request.trimStart = from;
    request.trimEnd = choices.to.value_or(media.duration);
    if (choices.audioTrack && request.settings.includeAudio)
        chooseTrack(request, tracks, *choices.audioTrack);
    return request;
}

void requireKnownLength(const MediaInfo& media, const std::filesystem::path& source)
{
    if (isLengthKnown(media))
        return;
    throw CliError("The length of “" + source.string() +
                   "” is unknown. Give it one by copying it into a new file, for example with: "
                   "ffmpeg -i SOURCE -c copy copy.mkv");
}

} // namespace stackreel
