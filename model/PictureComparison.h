#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel
{

/// A picture for comparisons: both halves of an output, each scaled down to 32 × 32 grey pixels, one above
/// the other.
struct SmallPicture {
    static constexpr std::size_t side = 32;
    static constexpr std::size_t halfBytes = side * side;

    std::string pixels; ///< 2 × `halfBytes` bytes, row by row

    /// Whether both pictures show the same, apart from the loss by encoding, the brightness and the contrast:
    /// each half has to correlate with that of the source. A half of the source that is nearly flat has no
    /// structure to correlate with. There the result has to be about as flat and as bright.
    bool resembles(const SmallPicture& source) const;
};

/// The pictures that are compared after an export. Each list is in the order of time.
struct ComparedPictures {
    std::vector<SmallPicture> sourceStart; ///< at most one, as in `resultStart`
    std::vector<SmallPicture> resultStart;
    std::vector<SmallPicture> sourceEnd;
    std::vector<SmallPicture> resultEnd;

    static constexpr std::size_t frameBytes = 2 * SmallPicture::halfBytes + SmallPicture::side;

    /// Parses frames of `frameBytes` bytes. The last byte of a frame determines its list: 0 to 63 is the
    /// first list, 64 to 127 the second, and so on. An incomplete frame at the end is ignored. Pure.
    static ComparedPictures parse(std::string_view frames);

    /// Whether the result begins, or ends, with a picture of the source. At the end any picture in
    /// `sourceEnd` will do, because rounding decides which one is the last. If a list is empty, the pictures
    /// count as the same, unless the source has a picture at its start and the result has none.
    bool sameStart() const;
    bool sameEnd() const;
};

} // namespace stackreel
