#pragma once

#include "tests/ffmpeg-shim/Colorimetry.h"

#include <filesystem>
#include <string>
#include <vector>

namespace stackreel::shim
{

/// How light is coded as a signal.
enum class Transfer { bt709, gamma22, gamma28, pq, hlg };

/// A kind of source.
struct SourceKind {
    const char* name;
    const char* pixelFormat; ///< as FFmpeg names it; planar
    int bits = 8;
    int chromaShiftX = 1; ///< chroma planes are smaller by this power of two
    int chromaShiftY = 1;
    bool isRgb = false;
    bool isGrey = false;  ///< the patches are the greys with their luma
    bool isYcgco = false; ///< instead of Y'CbCr
    LumaWeights luma = bt709Luma;
    bool fullRange = false;
    Transfer transfer = Transfer::bt709;
    Primaries primaries = bt709Primaries;
    const char* tags = ""; ///< options of FFmpeg's filter `setparams`; empty for none
    const char* codec = "ffv1";
    int width = 320;
    int height = 180;
    bool onlyContainer = false; ///< the H.264 stream itself has no tags

    bool isHdr() const { return transfer == Transfer::pq || transfer == Transfer::hlg; }
};

/// 8 × 4 patches: the 24 colours of a chart, bars, black and white; for high dynamic range also highlights
/// and colours outside of BT.709. Each is R'G'B' in the source's own coding, from 0 to 1.
inline constexpr int patchColumns = 8;
inline constexpr int patchRows = 4;
std::vector<Triple> patchesOf(const SourceKind& kind);

/// A file in `folder` with three pictures of the patches, without loss: MP4 for H.264, otherwise Matroska. It
/// is written unless it exists.
std::filesystem::path patchesFile(const std::filesystem::path& folder, const SourceKind& kind);

/// The mean R'G'B' of each patch in the first picture of a BT.709 file with limited range. The picture has
/// the given size. Empty if it cannot be decoded.
std::vector<Triple> measuredPatches(const std::filesystem::path& file, int width, int height);

/// The colour that a patch should have in an export, computed from the standards, as L*a*b*. The light of
/// standard dynamic range is that of a display of ITU-R BT.1886 with a perfect black.
Triple expectedLab(const Triple& signal, const SourceKind& kind);
/// The colour of an exported R'G'B'.
Triple exportedLab(const Triple& signal);

} // namespace stackreel::shim
