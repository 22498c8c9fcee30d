#pragma once

#include "ffmpeg-shim/H264Encoder.h"

#include <string>
#include <vector>

namespace stackreel::shim
{

/// The arguments of `ffmpeg` without the program's name; bytes, unchanged.
using Arguments = std::vector<std::string>;

/// Whether the arguments request VideoToolbox: they contain `-c:v h264_videotoolbox -allow_sw 1`, these four
/// in this order and next to each other.
bool requestsVideoToolbox(const Arguments& arguments);

/// Changes arguments that request VideoToolbox for an FFmpeg that has `encoder`; returns any others
/// unchanged. The filters of `-vf` are changed by `withEvenSides`. If `encoder` is not VideoToolbox:
/// - Each group of four is replaced by `encoder` and its options, which also keep the time of every picture.
/// - Audio that is encoded as AAC (`-c:a aac`) gets a channel layout that the encoder supports.
/// - The filter graph (`-filter_complex`) is changed by `withFullChroma` and, if there is one output, by
///   `withTimeStampsResetAfterEncoding`.
/// - A seek to the start of an input (`-ss 0.000`) is removed.
Arguments withEncoder(const Arguments& arguments, H264Encoder encoder);

/// Has the last output of an export carry the text as its comment: inserts `-metadata comment=…` before the
/// name of the file. Returns arguments without a filter graph (`-filter_complex`), and any arguments if the
/// text is empty, unchanged.
Arguments withComment(Arguments arguments, const std::string& text);

} // namespace stackreel::shim
