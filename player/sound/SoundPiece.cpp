#include "player/sound/SoundPiece.h"

#include <algorithm>

namespace stackreel
{

namespace
{

/// The nearest whole number of moments at which there is a sample on each channel; not negative.
std::int64_t momentsIn(Nanoseconds time)
{
    return std::max<std::int64_t>((time * SoundPiece::rate + second / 2) / second, 0);
}

} // namespace

Nanoseconds SoundPiece::end() const
{
    return position + static_cast<Nanoseconds>(samples.size()) / channels * second / rate;
}

void SoundPiece::cut(Nanoseconds from, Nanoseconds to)
{
    const auto count = static_cast<std::int64_t>(samples.size()) / channels;
    const std::int64_t last = std::min(momentsIn(to - position), count);
    const std::int64_t first = std::min(momentsIn(from - position), last);
    samples.resize(static_cast<std::size_t>(last * channels));
    samples.erase(samples.begin(), samples.begin() + first * channels);
    position += first * second / rate;
}

} // namespace stackreel
