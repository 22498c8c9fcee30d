#include "player/sound/SoundFeeder.h"

#include <algorithm>
#include <cstdlib>

namespace stackreel
{

namespace
{

/// Half of the time between two samples.
constexpr Nanoseconds tick = second / SoundPiece::rate / 2;
/// A piece that starts within this distance of the end of the one before it follows it directly. Some
/// containers have time stamps in whole milliseconds; cut by these, every other piece would lose a sample or
/// two.
constexpr Nanoseconds timeStampTolerance = 5 * millisecond;
/// After this many runs that ended early, their sound counts as all of the range.
constexpr int mostIncompleteRuns = 3;

} // namespace

void SoundFeeder::beginAt(const SoundRuns& runs, Nanoseconds played)
{
    m_run.reset();
    const SoundRuns::Run* run = runs.at(played);
    if (!run)
        return;
    const Nanoseconds position = runs.range().start + played - run->base;
    enter(*run, std::max(position, run->from), runs.range());
}

void SoundFeeder::enter(const SoundRuns::Run& run, Nanoseconds position, const LoopRange& range)
{
    m_run = run;
    m_position = position;
    m_delivered = false;
    m_readToEnd = false;
    m_replayed.reset();
    m_collecting = !m_complete && position <= range.start + tick;
    if (m_complete) {
        m_replayed = 0;
        return;
    }
    m_kept.clear();
    m_keptSamples = 0;
    m_reader.beginAt(position);
}

SoundFeeder::Step SoundFeeder::step(const SoundRuns& runs, DuePiece& next)
{
    if (!m_run)
        return Step::waiting;
    const Nanoseconds end = runs.endOf(*m_run);
    if (m_readToEnd || m_position >= end - tick)
        return leave(runs);
    SoundPiece piece;
    switch (read(piece)) {
    case SoundReader::Step::waiting:
        return Step::waiting;
    case SoundReader::Step::end:
        m_readToEnd = true;
        return Step::working;
    default:
        break;
    }
    alignToPrevious(piece);
    if (piece.position >= end) {
        m_readToEnd = true;
        return Step::working;
    }
    piece.cut(m_position, end);
    if (piece.isEmpty())
        return Step::working;
    m_position = piece.end();
    m_delivered = true;
    next.due = m_run->base + piece.position - runs.range().start;
    next.piece = std::move(piece);
    return Step::piece;
}

/// Within a run, pieces follow one another without a gap or an overlap.
void SoundFeeder::alignToPrevious(SoundPiece& piece) const
{
    if (m_delivered && !piece.isEmpty() && std::abs(piece.position - m_position) < timeStampTolerance)
        piece.position = m_position;
}

/// Goes on to the next run as soon as that is known. Sound that is late by more than a run skips runs that
/// are over.
SoundFeeder::Step SoundFeeder::leave(const SoundRuns& runs)
{
    const SoundRuns::Run* following = runs.after(m_run->iteration);
    if (!following)
        return Step::waiting;
    keepRun();
    enter(*following, following->from, runs.range());
    return Step::working;
}

/// At the end of a run: from now on the kept pieces are all of the range, unless reading ended early, because
/// it may get further in another run.
void SoundFeeder::keepRun()
{
    if (m_complete || !m_collecting)
        return;
    m_complete = !m_reader.endedEarly() || ++m_incompleteRuns >= mostIncompleteRuns;
}

SoundReader::Step SoundFeeder::read(SoundPiece& piece)
{
    if (m_replayed) {
        if (*m_replayed >= m_kept.size())
            return SoundReader::Step::end;
        piece = m_kept[(*m_replayed)++];
        return SoundReader::Step::piece;
    }
    const SoundReader::Step step = m_reader.step(piece);
    if (step == SoundReader::Step::piece && m_collecting) {
        m_keptSamples += piece.samples.size();
        m_collecting = m_keptSamples <= m_budget;
        if (m_collecting)
            m_kept.push_back(piece);
        else
            m_kept.clear();
    }
    return step;
}

} // namespace stackreel
