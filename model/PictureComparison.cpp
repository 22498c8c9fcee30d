#include "model/PictureComparison.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace stackreel
{

namespace
{

// After encoding, the correlation of the same pictures is above 0.98 at this size. That of another picture,
// crop or time is rarely above 0.8, and that of a flat grey is about 0.
constexpr double leastCorrelation = 0.9;
// Limits for 8-bit values (0 to 255). A half of the source whose standard deviation is below the first limit
// counts as flat. The same half of the result then has to have a deviation below the second limit, and a mean
// that differs by less than the third.
constexpr double flatSource = 4;
constexpr double flatResult = 10;
constexpr double sameBrightness = 48;

struct Statistics {
    double mean = 0;
    double deviation = 0;
};

double value(char byte)
{
    return static_cast<unsigned char>(byte);
}

Statistics statistics(std::string_view pixels)
{
    double sum = 0;
    double squares = 0;
    for (const char byte : pixels) {
        sum += value(byte);
        squares += value(byte) * value(byte);
    }
    const auto count = static_cast<double>(pixels.size());
    const double mean = sum / count;
    return {.mean = mean, .deviation = std::sqrt(std::max(squares / count - mean * mean, 0.0))};
}

double correlation(std::string_view one, const Statistics& ofOne, std::string_view other,
                   const Statistics& ofOther)
{
    double sum = 0;
    for (std::size_t index = 0; index < one.size(); ++index)
        sum += (value(one[index]) - ofOne.mean) * (value(other[index]) - ofOther.mean);
    return sum / static_cast<double>(one.size()) / (ofOne.deviation * ofOther.deviation);
}

bool halfResembles(std::string_view result, std::string_view source)
{
    const Statistics ofResult = statistics(result);
    const Statistics ofSource = statistics(source);
    if (ofSource.deviation < flatSource)
        return ofResult.deviation < flatResult && std::abs(ofResult.mean - ofSource.mean) < sameBrightness;
    // The correlation divides by the deviation, which is 0 for a flat result.
    return ofResult.deviation > 0.5 && correlation(result, ofResult, source, ofSource) >= leastCorrelation;
}

} // namespace

bool SmallPicture::resembles(const SmallPicture& source) const
{
    const std::string_view mine = pixels;
    const std::string_view its = source.pixels;
    return halfResembles(mine.substr(0, halfBytes), its.substr(0, halfBytes)) &&
           halfResembles(mine.substr(halfBytes), its.substr(halfBytes));
}

ComparedPictures ComparedPictures::parse(std::string_view frames)
{
    ComparedPictures pictures;
    const std::array lists = {&pictures.sourceStart, &pictures.resultStart, &pictures.sourceEnd,
                              &pictures.resultEnd};
    for (; frames.size() >= frameBytes; frames.remove_prefix(frameBytes)) {
        const auto mark = static_cast<unsigned char>(frames[frameBytes - 1]);
        lists.at(mark / 64U)->emplace_back().pixels = frames.substr(0, 2 * SmallPicture::halfBytes);
    }
    return pictures;
}

bool ComparedPictures::sameStart() const
{
    if (sourceStart.empty())
        return true;
    return !resultStart.empty() && resultStart.front().resembles(sourceStart.front());
}

bool ComparedPictures::sameEnd() const
{
    if (sourceEnd.empty() || resultEnd.empty())
        return true;
    return std::any_of(sourceEnd.begin(), sourceEnd.end(),
                       [&](const SmallPicture& picture) { return resultEnd.back().resembles(picture); });
}

} // namespace stackreel
