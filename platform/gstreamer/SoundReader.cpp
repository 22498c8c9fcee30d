#include "platform/gstreamer/SoundReader.h"

#include "platform/gstreamer/SampleTiming.h"

#include <cstring>

namespace stackreel
{

namespace
{

SoundPiece pieceOf(GstSample* sample)
{
    SoundPiece piece;
    piece.position = sampleTime(sample);
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

SoundReader::SoundReader(const std::filesystem::path& file, std::function<void()> wake)
    : m_pipeline(file, DecodePipeline::Content::sound, std::move(wake))
{
}

void SoundReader::beginAt(Nanoseconds time)
{
    m_from = time;
    m_seekPending = true;
}

SoundReader::Step SoundReader::step(SoundPiece& piece)
{
    // Asked before pulling: what arrives in between must not be taken for missing.
    const bool over = m_pipeline.failed() || m_pipeline.atEnd();
    if (m_seekPending) {
        if (!m_pipeline.started())
            return over ? Step::end : Step::waiting;
        m_seekPending = false;
        if (!m_pipeline.seekToSample(m_from))
            return Step::end;
        return Step::waiting;
    }
    const GstSamplePtr sample = m_pipeline.tryPull();
    if (!sample)
        return over ? Step::end : Step::waiting;
    piece = pieceOf(sample.get());
    return Step::piece;
}

} // namespace stackreel
