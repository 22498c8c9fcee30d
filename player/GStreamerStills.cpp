#include "player/GStreamerStills.h"

#include "player/base/ForegroundWork.h"
#include "player/pictures/RgbConverter.h"
#include "player/source/Playability.h"
#include "player/stills/ImageSearch.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <stdexcept>

namespace stackreel
{

namespace
{

/// The indices of the times, in the order of time.
std::vector<std::size_t> orderOf(const std::vector<MediaTime>& times)
{
    std::vector<std::size_t> order(times.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&times](std::size_t left, std::size_t right) {
        return toNanoseconds(times[left]) < toNanoseconds(times[right]);
    });
    return order;
}

/// The tolerance without overlap: where the times are closer together than it reaches, pictures would repeat
/// each other or swap places.
Nanoseconds usedTolerance(const StillRequest& request, const std::vector<std::size_t>& order)
{
    Nanoseconds used = std::max<Nanoseconds>(toNanoseconds(request.tolerance), 0);
    for (std::size_t i = 1; i < order.size(); ++i) {
        const Nanoseconds gap =
            toNanoseconds(request.times[order[i]]) - toNanoseconds(request.times[order[i - 1]]);
        if (gap > 0)
            used = std::min(used, gap / 2);
    }
    return used;
}

} // namespace

bool GStreamerStills::isPlayable(const std::filesystem::path& file, std::stop_token stop)
{
    return hasPlayableVideo(file, stop);
}

void GStreamerStills::take(const StillRequest& request, std::stop_token stop,
                           const std::function<void(Still)>& report)
{
    const std::vector<std::size_t> order = orderOf(request.times);
    const Nanoseconds tolerance = usedTolerance(request, order);
    RgbConverter converter;
    // Wait before the file is opened: with a long file that takes time which a player would miss.
    std::chrono::nanoseconds patience = std::chrono::seconds(5);
    waitForForegroundWork(stop, patience);
    std::optional<ImageSearch> search;
    try {
        search.emplace(request.file, PictureSize{request.maximumWidth, request.maximumHeight}, stop);
    } catch (const std::runtime_error&) {
        // GStreamer lacks an element: every picture is reported as failed.
    }
    for (std::size_t index : order) {
        const MediaTime time = request.times[index];
        const bool findable = search && time != MediaTime::indefinite();
        const PlanarFramePtr found = findable ? search->near(toNanoseconds(time), tolerance) : nullptr;
        if (stop.stop_requested())
            return;
        report({time, found ? converter.convert(*found) : VideoFrame{}});
    }
}

} // namespace stackreel
