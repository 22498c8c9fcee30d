#pragma once

#include "framing/ExportCommandBuilder.h"

#include <QCoroTask>

#include <filesystem>
#include <stop_token>
#include <string>
#include <vector>

namespace stackreel
{

/// How thoroughly the pictures at the end are decoded.
enum class Decoding {
    fast, ///< without pictures that no other picture refers to, and without the loop filter; only the last
          ///< ones
    exact ///< all pictures of the last quarter second
};

/// The arguments of `ffmpeg` that write the first pictures and those of the last quarter second of an export,
/// and of its source at the same times, to standard output in the form of `ComparedPictures`. Pure.
std::vector<std::string> pictureCheckArguments(const ExportRequest& request, Decoding decoding);

/// Compares the first and the last picture of a written export with the source's, by `ffmpeg` at the given
/// path. Decodes fast, and exactly where that shows a difference.
///
/// Throws `std::runtime_error` with a sentence for the user where they differ; `CancellationError` when the
/// token fired, and the other errors of `ProcessRunner::run`. A picture that cannot be decoded on either side
/// is not compared, as where the source's picture ends before its sound. Resumes on the calling thread, which
/// needs a running event loop.
QCoro::Task<> checkPictures(std::filesystem::path ffmpeg, ExportRequest request, std::stop_token stop);

} // namespace stackreel
