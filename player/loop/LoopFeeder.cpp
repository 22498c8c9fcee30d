#include "player/loop/LoopFeeder.h"

#include <algorithm>
#include <utility>

namespace stackreel
{

namespace
{

/// How much longer than its pictures a file may claim to be and be believed: sound often ends a bit later.
constexpr Nanoseconds believableTail = second / 4;
/// What the shortest run through a range takes, so that damaged times cannot make an endless rush.
constexpr Nanoseconds shortestRun = 10 * millisecond;

} // namespace

LoopFeeder::LoopFeeder(FrameReader& reader, LoopRange range, std::size_t budget)
    : m_reader(reader), m_range(range), m_budget(budget)
{
}

void LoopFeeder::takeOver(LoopFeeder& before)
{
    before.keepInterrupted();
    const auto& kept = before.m_adopted ? before.m_adopted : before.m_kept;
    if (kept && kept->fits(m_reader.box()) && before.m_range.start == m_range.start)
        m_kept = kept->withEnd(m_range.end);
    m_decoded = std::move(before.m_decoded);
}

void LoopFeeder::beginAt(Nanoseconds time, std::vector<QueuedFrame> decoded)
{
    m_base = 0;
    m_iteration = 0;
    m_parked = false;
    m_outside = !m_range.contains(time);
    m_entry = time;
    m_last.reset();
    keepInterrupted();
    m_replayed.reset();
    const auto left = std::exchange(m_decoded, {});
    if (m_adopted)
        m_kept = std::exchange(m_adopted, nullptr);
    if (m_kept && !m_kept->fits(m_reader.box()))
        m_kept.reset();
    if (!m_outside && replayFrom(time))
        return;
    if (!m_kept && !m_outside && time <= m_range.start + halfUnit)
        startCollecting();
    for (const PlanarFramePtr& frame : left)
        if (!decoded.empty())
            decoded.push_back({frame, 0, frame->time});
    if (!continueFrom(decoded, time))
        m_reader.showFrom(time);
}

/// Whether the kept frames cover the time; they are replayed from there then.
bool LoopFeeder::replayFrom(Nanoseconds time)
{
    if (!m_kept || m_kept->frames.empty())
        return false;
    const auto& frames = m_kept->frames;
    const auto after = std::find_if(frames.begin(), frames.end(), [time](const PlanarFramePtr& frame) {
        return frame->time > time + halfUnit;
    });
    if (after == frames.end() && !m_kept->complete)
        return false;
    const auto under = after == frames.begin() ? after : after - 1;
    m_replayed = static_cast<std::size_t>(under - frames.begin());
    if (!m_kept->complete)
        m_reader.continueAfter(frames.back()->time);
    return true;
}

/// Whether one of the decoded frames is on screen at the time; they are delivered from there then.
bool LoopFeeder::continueFrom(const std::vector<QueuedFrame>& decoded, Nanoseconds time)
{
    const auto after = std::find_if(decoded.begin(), decoded.end(), [time](const QueuedFrame& queued) {
        return queued.frame->time > time + halfUnit;
    });
    if (after == decoded.begin() || (after == decoded.end() && decoded.back().position < time))
        return false;
    for (auto queued = after - 1; queued != decoded.end(); ++queued)
        m_decoded.push_back(queued->frame);
    m_decodedBox = m_reader.box();
    if (!m_reader.isBehind(m_decoded.back()->time))
        m_reader.continueAfter(m_decoded.back()->time);
    return true;
}

/// The next frame, from memory if it is there in the present size.
FrameReader::Step LoopFeeder::read(PlanarFramePtr& frame)
{
    if (!m_decoded.empty() && m_last && m_decodedBox != m_reader.box()) {
        m_decoded.clear();
        m_reader.continueAfter(m_last->time);
    }
    if (m_decoded.empty())
        return m_reader.step(frame);
    frame = std::move(m_decoded.front());
    m_decoded.pop_front();
    return FrameReader::Step::frame;
}

LoopFeeder::Step LoopFeeder::step(QueuedFrame& next)
{
    if (m_parked)
        return Step::waiting;
    if (m_replayed)
        return replay(next);
    PlanarFramePtr frame;
    switch (read(frame)) {
    case FrameReader::Step::frame:
        return accept(frame, next);
    case FrameReader::Step::end:
    case FrameReader::Step::failed:
        // Begun again, a range without a single frame would be over at once, over and over.
        return m_last ? endOfPictures() : Step::failed;
    case FrameReader::Step::working:
        return Step::working;
    default:
        return Step::waiting;
    }
}

std::optional<Clock::Instant> LoopFeeder::deadline() const
{
    if (m_parked || m_replayed)
        return std::nullopt;
    return m_reader.deadline();
}

LoopFeeder::Step LoopFeeder::replay(QueuedFrame& next)
{
    if (*m_replayed < m_kept->frames.size()) {
        next = queued(m_kept->frames[(*m_replayed)++], true);
        return Step::frame;
    }
    if (m_kept->complete)
        return endOfRange(m_kept->end);
    m_replayed.reset();
    if (m_kept->grows) {
        m_collecting = std::make_shared<KeptFrames>(*m_kept);
        m_collecting->grows = false;
    }
    return Step::working;
}

LoopFeeder::Step LoopFeeder::accept(const PlanarFramePtr& frame, QueuedFrame& next)
{
    if (m_last && m_range.reachedBy(frame->time))
        return endOfRange(m_range.end);
    if (m_collecting)
        m_collecting->changeBox(m_reader.box());
    const bool kept = m_collecting && m_collecting->add(frame, m_budget);
    if (m_collecting && !kept)
        m_kept = std::exchange(m_collecting, nullptr);
    next = queued(frame, kept);
    m_parked = m_outside;
    return Step::frame;
}

/// The file shows no frame any more before the range's end.
LoopFeeder::Step LoopFeeder::endOfPictures()
{
    if (m_reader.endedEarly() && m_collecting)
        m_kept = std::exchange(m_collecting, nullptr); // the next time there may be more
    return endOfRange(endOfMedia());
}

LoopFeeder::Step LoopFeeder::endOfRange(Nanoseconds end)
{
    if (m_collecting) {
        m_collecting->complete = true;
        m_collecting->end = end;
        m_kept = std::exchange(m_collecting, nullptr);
    }
    m_base += std::max(end - m_range.start, shortestRun);
    beginAgain();
    return Step::working;
}

void LoopFeeder::beginAgain()
{
    ++m_iteration;
    m_last.reset();
    m_entry = m_range.start;
    if (m_adopted)
        m_kept = std::exchange(m_adopted, nullptr);
    if (m_dropsOutdated && m_kept && !m_kept->fits(m_reader.box()))
        m_kept.reset();
    m_replayed.reset();
    m_decoded.clear();
    if (m_kept && !m_kept->frames.empty()) {
        m_replayed = 0;
        if (!m_kept->complete)
            m_reader.continueAfter(m_kept->frames.back()->time);
        return;
    }
    startCollecting();
    m_reader.showFrom(m_range.start);
}

void LoopFeeder::startCollecting()
{
    m_collecting = std::make_shared<KeptFrames>();
    m_collecting->range = m_range;
    m_collecting->box = m_reader.box();
}

/// A collection that is not whole is of use if it lasts while the decoder gets back to the frame behind it.
void LoopFeeder::keepInterrupted()
{
    if (m_collecting && !m_collecting->frames.empty() &&
        m_collecting->frames.back()->time - m_range.start >= second) {
        m_collecting->grows = true;
        m_kept = std::exchange(m_collecting, nullptr);
    }
    m_collecting.reset();
}

/// The range's end as far as the file has pictures, when it has none left before the range's own end.
Nanoseconds LoopFeeder::endOfMedia() const
{
    if (!m_last)
        return m_range.end;
    const Nanoseconds pictures = m_last->time + m_last->duration;
    if (pictures <= m_range.start + shortestRun)
        return m_range.end; // all of the range lies past the last picture, which stays
    const Nanoseconds claimed = m_reader.claimedDuration();
    const bool tail = claimed > pictures && claimed - pictures <= believableTail;
    return std::min(m_range.end, tail ? claimed : pictures);
}

bool LoopFeeder::adopt(std::shared_ptr<const KeptFrames> kept)
{
    if (kept->range != m_range)
        kept = m_kept ? m_kept->behind(*kept) : nullptr;
    if (!kept)
        return false;
    m_adopted = std::move(kept);
    if (!m_replayed)
        m_kept.reset(); // or both would be in memory until the range begins again
    return true;
}

LoopRange LoopFeeder::headRange() const
{
    const KeptFrames* kept = m_adopted ? m_adopted.get() : m_kept.get();
    if (!kept)
        return m_range;
    return kept->fits(m_reader.box()) ? LoopRange() : kept->lacking(m_reader.box());
}

QueuedFrame LoopFeeder::queued(const PlanarFramePtr& frame, bool kept)
{
    const Nanoseconds position = m_entry ? *std::exchange(m_entry, std::nullopt) : frame->time;
    m_last = frame;
    return {frame, m_base + position - m_range.start, position, m_iteration, kept};
}

} // namespace stackreel
