#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel
{

/// A picture for comparisons: both halves of an output, each reduced to 32 × 32 grey pixels, one above the
/// other.
struct SmallPicture {
    static constexpr std::size_t side = 32;
    static constexpr std::size_t halfBytes = side * side;

    std::string pixels; ///< 2 × `halfBytes` bytes, row by row

    /// Whether both show the same, whatever the loss of an encoder, the brightness or the contrast: each half
    /// correlates with the other's. Halves of the source that are nearly flat have no structure to correlate:
    /// there the result has to be about as flat and as bright.
    bool resembles(const SmallPicture& source) const;
};

/// The pictures that are compared after an export, in the order of their times.
struct ComparedPictures {
    std::vector<SmallPicture> sourceStart; ///< one at most, like `resultStart`
    std::vector<SmallPicture> resultStart;
    std::vector<SmallPicture> sourceEnd;
    std::vector<SmallPicture> resultEnd;

    static constexpr std::size_t frameBytes = 2 * SmallPicture::halfBytes + SmallPicture::side;

    /// Reads frames of `frameBytes` bytes. The last byte of each tells which list it belongs to: 0 to 63 the
    /// first one, and so on. An incomplete frame at the end is left out. Pure.
    static ComparedPictures parse(std::string_view frames);

    /// Whether the result begins and ends with pictures of the source. At the end any of the source's
    /// pictures there counts, as the last one depends on rounding. What is missing on either side counts as
    /// the same.
    bool sameStart() const;
    bool sameEnd() const;
};

} // namespace stackreel
