#include "player/sound/SoundReader.h"

#include "player/source/SampleTiming.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

namespace stackreel
{

namespace
{

/// Reading begins this much earlier than requested. Decoders and resamplers blend each piece with the one
/// before, and the first one after a seek with nothing.
constexpr Nanoseconds warmUp = 100 * millisecond;
/// Sound that begins this much later than requested was missed by the seek.
constexpr Nanoseconds misplaced = 10 * millisecond;
/// Where sound is missing further into a file, it is not searched for from the file's beginning.
constexpr Nanoseconds longestFragment = 60 * second;
/// After an error, sound that takes longer than this would come too late to be played.
constexpr auto drainTimeout = std::chrono::milliseconds(500);

SoundPiece pieceOf(GstSample* sample, Nanoseconds position)
{
    SoundPiece piece;
    piece.position = position;
    GstMapInfo map;
    GstBuffer* buffer = gst_sample_get_buffer(sample);
    if (piece.position < 0 || !buffer || !gst_buffer_map(buffer, &map, GST_MAP_READ))
        return piece;
    piece.samples.resize(map.size / sizeof(std::int16_t));
    std::memcpy(piece.samples.data(), map.data, piece.samples.size() * sizeof(std::int16_t));
    gst_buffer_unmap(buffer, &map);
    return piece;
}

} // namespace

SoundReader::SoundReader(SourceFile file, std::function<void()> wake)
    : m_file(std::move(file)), m_wake(std::move(wake)), m_end(drainTimeout)
{
    open();
}

void SoundReader::open()
{
    m_pipeline = std::make_unique<DecodePipeline>(m_file, DecodePipeline::Content::sound, m_wake);
    m_end.postpone();
}

void SoundReader::beginAt(Nanoseconds time)
{
    m_from = time;
    m_seekPending = true;
    if (m_pipeline->failed() && m_pipeline->started())
        open();
}

bool SoundReader::isEmpty()
{
    return m_end.isReached(*m_pipeline) && !m_pipeline->started();
}

SoundReader::Step SoundReader::step(SoundPiece& piece)
{
    const bool over = m_end.isReached(*m_pipeline);
    if (m_seekPending && !m_pipeline->started())
        return over ? Step::end : Step::waiting;
    if (m_seekPending)
        return seek();
    while (const GstSamplePtr sample = pull()) {
        piece = pieceOf(sample.get(), m_pipeline->timeOf(sample.get()));
        if (std::exchange(m_sought, false) && isMisplaced(piece)) {
            open();
            return Step::waiting;
        }
        if (piece.isEmpty() || piece.end() > m_from - warmUp)
            return Step::piece;
    }
    return over ? Step::end : Step::waiting;
}

SoundReader::Step SoundReader::seek()
{
    m_seekPending = false;
    if (m_beginning < 0)
        pull();
    m_end.postpone();
    m_sought = m_pipeline->seekToSample(std::max<Nanoseconds>(m_from - warmUp, 0));
    return m_sought ? Step::waiting : Step::end;
}

GstSamplePtr SoundReader::pull()
{
    GstSamplePtr sample = m_pipeline->tryPull();
    if (!sample)
        return sample;
    m_end.postpone();
    if (m_beginning < 0)
        m_beginning = m_pipeline->timeOf(sample.get());
    return sample;
}

/// Whether the first piece after a seek shows that the seek led to a wrong place, as it does in the first
/// fragment of some files. The file then has to be read from its beginning.
bool SoundReader::isMisplaced(const SoundPiece& piece) const
{
    return m_from < longestFragment && piece.position > std::max(m_from, m_beginning) + misplaced;
}

} // namespace stackreel
