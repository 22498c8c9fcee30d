#pragma once

#include "framing/ExportCommandBuilder.h"

#include <QCoroTask>

#include <filesystem>
#include <stop_token>
#include <string>
#include <vector>

namespace stackreel
{

/// How the pictures at the end are decoded.
enum class Decoding {
    fast, ///< only the last few, without the loop filter and without pictures that are not references
    exact ///< all pictures of the last quarter second, completely; the source is read from well before
};

/// The arguments of `ffmpeg` to write pictures of an export and of its source to standard output, in the
/// format that `ComparedPictures::parse` reads: the first picture and those of the last quarter second of the
/// exported range. `luma` are filters for the pictures of the source, each after a comma, that give them the
/// luma of the export (`lumaFilters`). Pure.
std::vector<std::string> pictureCheckArguments(const ExportRequest& request, Decoding decoding,
                                               const std::string& luma = "");

/// Compares the first and the last picture of a written export with those of the source. `ffmpeg` is the path
/// of the tool. Decodes fast at first, and exactly if the pictures differ. In both cases the source is taken
/// as it is first, then with the luma of its export, which is another where the colours were converted.
///
/// Throws `ExportError` if the pictures differ; `TemporaryFolderFull` if that may be because not all of them
/// could be captured; `CancellationError` when the token fired, and the other errors of `ProcessRunner::run`.
/// Where the source has a first picture that can be decoded, the export must have one as well. Otherwise
/// pictures are not compared if either cannot be decoded, for example if the video stream of the source ends
/// before its audio. Resumes on the calling thread, which needs a running event loop.
QCoro::Task<> checkPictures(std::filesystem::path ffmpeg, ExportRequest request, std::stop_token stop);

} // namespace stackreel
