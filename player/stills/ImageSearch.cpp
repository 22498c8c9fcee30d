#include "player/stills/ImageSearch.h"

#include "player/base/ForegroundWork.h"

namespace stackreel
{

namespace
{

/// Short, because each image near damaged data takes as long.
constexpr std::chrono::milliseconds drainTimeout(300);

} // namespace

ImageSearch::ImageSearch(const SourceFile& file, PictureSize box, std::stop_token stop)
    : m_stop(std::move(stop)),
      m_onStop(m_stop, Notify{m_wakeUp}),
      m_finder(file, m_stop),
      m_reader(file, box, Notify{m_wakeUp}, drainTimeout)
{
}

PlanarFramePtr ImageSearch::near(Nanoseconds time, Nanoseconds tolerance)
{
    const std::optional<Nanoseconds> before = m_finder.atOrBefore(time);
    const std::optional<Nanoseconds> keyFrame = keyFrameNear(time, tolerance, before);
    if (!keyFrame)
        return decodeTowards(time, tolerance, before);
    if (m_last && std::abs(m_last->time - *keyFrame) <= halfUnit)
        return m_last;
    m_reader.showKeyFrame(*keyFrame);
    const PlanarFramePtr found = read();
    const bool near = found && time - found->time <= tolerance && found->time - time <= tolerance;
    return near || m_stop.stop_requested() ? found : decodeTowards(time, tolerance, before);
}

/// The nearest key frame within the tolerance.
std::optional<Nanoseconds> ImageSearch::keyFrameNear(Nanoseconds time, Nanoseconds tolerance,
                                                     std::optional<Nanoseconds> before)
{
    if (before && time - *before > tolerance)
        before.reset();
    std::optional<Nanoseconds> after = m_finder.atOrAfter(time);
    if (after && *after - time > tolerance)
        after.reset();
    if (!before || !after)
        return before ? before : after;
    return time - *before <= *after - time ? before : after;
}

PlanarFramePtr ImageSearch::decodeTowards(Nanoseconds time, Nanoseconds tolerance,
                                          std::optional<Nanoseconds> keyFrame)
{
    const Nanoseconds earliest = time - tolerance;
    const Nanoseconds latest = time + tolerance;
    if (m_last && m_last->time >= earliest && m_last->time <= latest)
        return m_last;
    if (m_last && keyFrame && *keyFrame <= m_last->time + halfUnit && m_last->time < earliest)
        m_reader.decodeOnTo(earliest);
    else
        m_reader.showFrom(earliest);
    const PlanarFramePtr found = read();
    if (!found || found->time >= earliest - halfUnit)
        return found && found->time <= latest + halfUnit ? found : nullptr;
    // It is on screen when the tolerance begins, but started before.
    PlanarFramePtr next = read();
    if (next && next->time <= latest + halfUnit)
        return next;
    return next || found->time + found->duration >= earliest ? found : nullptr;
}

PlanarFramePtr ImageSearch::read()
{
    PlanarFramePtr frame;
    while (!m_stop.stop_requested()) {
        waitForForegroundWork(m_stop, m_patience);
        switch (m_reader.step(frame)) {
        case FrameReader::Step::frame:
            m_last = frame;
            return frame;
        case FrameReader::Step::working:
            break;
        case FrameReader::Step::waiting:
            m_wakeUp.wait(m_reader.deadline());
            break;
        default:
            m_last.reset();
            return {};
        }
    }
    return {};
}

} // namespace stackreel
