#include "player/GstImageGenerator.h"

#include "player/base/ForegroundWork.h"
#include "player/pictures/RgbConverter.h"
#include "player/stills/ImageSearch.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <stdexcept>

namespace stackreel
{

namespace
{

/// The times' indices in the order of time.
std::vector<std::size_t> orderOf(const std::vector<MediaTime>& times)
{
    std::vector<std::size_t> order(times.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&times](std::size_t left, std::size_t right) {
        return toNanoseconds(times[left]) < toNanoseconds(times[right]);
    });
    return order;
}

/// The tolerance that is made use of: where the times lie closer together than it reaches, images would
/// repeat each other or swap places.
ImageSearch::Tolerance usedTolerance(const ImageGeneratorSettings& settings,
                                     const std::vector<MediaTime>& times,
                                     const std::vector<std::size_t>& order)
{
    ImageSearch::Tolerance used{std::max<Nanoseconds>(toNanoseconds(settings.toleranceBefore), 0),
                                std::max<Nanoseconds>(toNanoseconds(settings.toleranceAfter), 0)};
    for (std::size_t i = 1; i < order.size(); ++i) {
        const Nanoseconds gap = toNanoseconds(times[order[i]]) - toNanoseconds(times[order[i - 1]]);
        if (gap > 0)
            used = {std::min(used.before, gap / 2), std::min(used.after, gap / 2)};
    }
    return used;
}

GeneratedImage failure(MediaTime time)
{
    return {time, MediaTime::indefinite(), {}};
}

} // namespace

void GstImageGenerator::generate(const std::vector<MediaTime>& times, std::stop_token stop,
                                 const std::function<void(GeneratedImage)>& report)
{
    const std::vector<std::size_t> order = orderOf(times);
    const ImageSearch::Tolerance tolerance = usedTolerance(m_settings, times, order);
    const PictureSize box{m_settings.maximumWidth, m_settings.maximumHeight};
    RgbConverter converter;
    // Already opening a long file takes a while of which a player would lack.
    std::chrono::nanoseconds patience = std::chrono::seconds(5);
    waitForForegroundWork(stop, patience);
    std::optional<ImageSearch> search;
    try {
        search.emplace(m_file, box, m_settings.appliesPreferredTransform, stop);
    } catch (const std::runtime_error&) {
        // Reported below, image by image.
    }
    for (std::size_t index : order) {
        const MediaTime time = times[index];
        const bool findable = search && time != MediaTime::indefinite();
        const PlanarFramePtr found = findable ? search->near(toNanoseconds(time), tolerance) : nullptr;
        if (stop.stop_requested())
            return;
        const VideoFrame picture = found ? converter.convert(*found) : VideoFrame{};
        report(picture.pixels ? GeneratedImage{time, MediaTime::fromSeconds(picture.seconds), picture}
                              : failure(time));
    }
}

} // namespace stackreel
