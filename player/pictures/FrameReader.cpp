#include "player/pictures/FrameReader.h"

#include "player/source/SampleTiming.h"
#include "player/source/TrackOrientation.h"

#include <algorithm>
#include <utility>

namespace stackreel
{

namespace
{

/// A seek goes to a time this much later than the goal. Demuxers go back to the start of a packet of sound
/// that overlaps the requested time, and so from a key frame at that time to the one before it.
constexpr Nanoseconds packetOfSound = 48 * millisecond;

} // namespace

FrameReader::FrameReader(SourceFile file, PictureSize box, std::function<void()> wake,
                         std::chrono::nanoseconds drainTimeout)
    : m_file(std::move(file)), m_wake(std::move(wake)), m_scaler(box), m_end(drainTimeout)
{
    open();
}

void FrameReader::open()
{
    m_pipeline = std::make_unique<DecodePipeline>(m_file, DecodePipeline::Content::pictures, m_wake);
    m_atBeginning = true;
    m_decodesOn = true;
    m_end.postpone();
}

void FrameReader::showFrom(Nanoseconds time)
{
    const Goal goal{time, true};
    if (m_goal != goal) // or else it is on the way there
        setGoal(goal);
}

void FrameReader::showKeyFrame(Nanoseconds time)
{
    setGoal({time, true, true});
}

void FrameReader::continueAfter(Nanoseconds time)
{
    setGoal({time, false});
}

void FrameReader::decodeOnTo(Nanoseconds time)
{
    if (m_seekPending || !m_decodesOn || !m_pipeline)
        return showFrom(time);
    m_goal = {time, true};
    m_seekTime = 0; // no earlier frame is needed
}

void FrameReader::releaseDecoder()
{
    if (!m_pipeline)
        return;
    setGoal(m_goal.value_or(Goal{m_deliveredTime, false}));
    m_releasedDuration = m_pipeline->claimedDuration();
    m_pipeline.reset();
}

Nanoseconds FrameReader::claimedDuration() const
{
    return m_pipeline ? m_pipeline->claimedDuration() : m_releasedDuration;
}

void FrameReader::setGoal(Goal goal)
{
    m_goal = goal;
    m_candidate.reset();
    m_following.reset();
    m_stepBack = -packetOfSound;
    m_seekTime = std::max<Nanoseconds>(goal.time - m_stepBack, 0);
    m_seekPending = true;
}

FrameReader::Step FrameReader::step(PlanarFramePtr& frame)
{
    if (m_following) {
        Picture following = std::move(*std::exchange(m_following, std::nullopt));
        return m_goal ? approach(std::move(following), frame) : deliver(std::move(following), frame);
    }
    if (m_seekPending && !seekToGoal())
        return m_end.isReached(*m_pipeline) ? Step::failed : Step::waiting;
    const bool over = m_end.isReached(*m_pipeline);
    Picture picture;
    picture.sample = m_pipeline->tryPull();
    if (!picture.sample)
        return over ? endOfStream(frame) : Step::waiting;
    const bool fromBeginning = std::exchange(m_atBeginning, false);
    m_end.postpone();
    picture.duration = sampleDuration(picture.sample.get());
    picture.time = m_pipeline->timeOf(picture.sample.get());
    if (picture.time < 0)
        picture.time = m_lastTime < 0 ? 0 : m_lastTime + picture.duration;
    if (fromBeginning)
        m_firstTime = picture.time;
    else if (m_lastTime < 0 && isMisplaced(picture.time))
        return readFromBeginning();
    if (picture.time <= m_lastTime)
        return Step::working; // out of order: a damaged stream
    m_lastTime = picture.time;
    return m_goal ? approach(std::move(picture), frame) : deliver(std::move(picture), frame);
}

/// False when the pipeline has not come far enough to seek.
bool FrameReader::seekToGoal()
{
    if (!m_pipeline || (m_pipeline->failed() && !m_atBeginning))
        open(); // an error ended the reading
    // A file that fails at once cannot seek, but its beginning can be read.
    if (m_atBeginning && (m_goal->time <= halfUnit || m_pipeline->failed()))
        m_seekTime = 0;
    else if (!m_pipeline->started())
        return false;
    else if (!seek() && !m_atBeginning)
        open(); // a stream that cannot seek is read from its beginning again
    m_seekPending = false;
    m_lastTime = -1;
    return true;
}

/// False when the stream cannot seek at all, so that it has to be read from its beginning.
bool FrameReader::seek()
{
    m_decodesOn = !m_goal->keyFrameOnly;
    const bool sought = m_decodesOn ? m_pipeline->seekToKeyFrame(m_seekTime)
                                    : m_pipeline->seekToOneKeyFrame(m_seekTime, m_goal->time);
    if (!sought && !m_pipeline->seekToKeyFrame(m_seekTime = 0)) {
        m_decodesOn = true;
        return false;
    }
    m_atBeginning = false;
    m_end.postpone();
    return true;
}

/// For times shortly before a key frame, for streams without an index, whose seeks land somewhere near, and
/// for times past the end.
FrameReader::Step FrameReader::seekEarlier()
{
    if (m_stepBack < -halfUnit)
        m_stepBack = -halfUnit;
    else
        m_stepBack = m_stepBack > 0 ? m_stepBack * 4 : second;
    m_seekTime = std::max<Nanoseconds>(m_goal->time - m_stepBack, 0);
    m_goal->keyFrameOnly = false; // it was not found where it should be
    m_seekPending = true;
    return Step::working;
}

/// Whether the first picture after a seek shows that the seek led to a wrong place. In the first fragment of
/// some files no seek works, and in that of others the times are wrong afterwards.
bool FrameReader::isMisplaced(Nanoseconds time) const
{
    const bool tooLate = m_goal && m_seekTime == 0 && time > std::max(m_goal->time, m_firstTime) + halfUnit;
    return tooLate || m_pipeline->hasWrongTimes();
}

/// Opens the file again and reads up to the goal.
FrameReader::Step FrameReader::readFromBeginning()
{
    open();
    m_seekTime = 0;
    m_lastTime = -1;
    m_candidate.reset();
    return Step::working;
}

FrameReader::Step FrameReader::approach(Picture picture, PlanarFramePtr& frame)
{
    if (picture.time <= m_goal->time + halfUnit) {
        m_candidate = std::move(picture);
        return Step::working;
    }
    if (!m_candidate && m_seekTime > 0)
        return seekEarlier();
    const bool inclusive = std::exchange(m_goal, std::nullopt)->inclusive;
    std::optional<Picture> candidate = std::exchange(m_candidate, std::nullopt);
    if (!inclusive || !candidate)
        return deliver(std::move(picture), frame);
    m_following = std::move(picture);
    return deliver(std::move(*candidate), frame);
}

FrameReader::Step FrameReader::endOfStream(PlanarFramePtr& frame)
{
    if (!m_goal)
        return Step::end;
    if (!m_candidate && m_seekTime > 0)
        return seekEarlier();
    const bool inclusive = std::exchange(m_goal, std::nullopt)->inclusive;
    std::optional<Picture> candidate = std::exchange(m_candidate, std::nullopt);
    if (!candidate)
        return Step::failed;
    return inclusive ? deliver(std::move(*candidate), frame) : Step::end;
}

FrameReader::Step FrameReader::deliver(Picture picture, PlanarFramePtr& frame)
{
    m_deliveredTime = picture.time;
    frame = m_scaler.scale(picture.sample.get(), orientation(), picture.time, picture.duration);
    return frame ? Step::frame : Step::working;
}

Orientation FrameReader::orientation()
{
    const Orientation told = m_pipeline->orientation();
    if (told != Orientation())
        return told;
    if (!m_ignoredOrientation)
        m_ignoredOrientation = ignoredOrientation(m_file.path());
    return *m_ignoredOrientation;
}

} // namespace stackreel
