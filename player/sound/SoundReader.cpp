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
    if (m_seekPending) {
        if (!m_pipeline->started())
            return over ? Step::end : Step::waiting;
        m_seekPending = false;
        m_end.postpone();
        if (!m_pipeline->seekToSample(std::max<Nanoseconds>(m_from - warmUp, 0)))
            return Step::end;
        return Step::waiting;
    }
    const GstSamplePtr sample = m_pipeline->tryPull();
    if (!sample)
        return over ? Step::end : Step::waiting;
    m_end.postpone();
    piece = pieceOf(sample.get(), m_pipeline->timeOf(sample.get()));
    return Step::piece;
}

} // namespace stackreel
