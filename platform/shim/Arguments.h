#pragma once

#include "platform/shim/H264Encoder.h"

#include <string>
#include <vector>

namespace stackreel::shim
{

/// FFmpeg's arguments without the program's own name, as the bytes they were given in.
using Arguments = std::vector<std::string>;

/// Whether `arguments` hold `-c:v h264_videotoolbox -allow_sw 1`: these four, in this order, side by side.
bool asksForVideoToolbox(const Arguments& arguments);

/// `arguments` for an FFmpeg with `encoder`. Where they ask for VideoToolbox, the pictures of each simple
/// filter graph (`-vf`) get even sides (`withEvenSides`). Where `encoder` is another one:
/// - each such group of four is replaced by `encoder` with its options, and every picture keeps its time;
/// - an AAC encode (`-c:a aac`) gets a channel layout that the encoder takes;
/// - in a filter graph (`-filter_complex`), halves of an odd height keep full chroma (`withFullChroma`), and
///   time stamps are reset behind the encoder instead (`withTimeStampsResetAfterEncoding`);
/// - a seek to an input's beginning (`-ss 0.000`) is left out.
/// Every other argument, the bit rate included, is unchanged. Without such a group nothing changes at all.
Arguments withEncoder(const Arguments& arguments, H264Encoder encoder);

} // namespace stackreel::shim
