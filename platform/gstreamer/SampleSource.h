#pragma once

#include "platform/gstreamer/DecodePipeline.h"
#include "platform/gstreamer/WakeUp.h"

#include <stop_token>

namespace stackreel
{

/// A pipeline for a thread that waits for its samples.
class SampleSource
{
public:
    /// As with `DecodePipeline`. Waiting ends when `stop` fires.
    SampleSource(const SourceFile& file, DecodePipeline::Content content, std::stop_token stop)
        : m_stop(std::move(stop)),
          m_onStop(m_stop, Notify{m_wakeUp}),
          m_pipeline(file, content, Notify{m_wakeUp})
    {
    }

    /// None when nothing follows or waiting was ended.
    GstSamplePtr next()
    {
        while (!m_stop.stop_requested()) {
            const bool over = m_pipeline.failed() || m_pipeline.atEnd();
            GstSamplePtr sample = m_pipeline.tryPull();
            if (sample || over)
                return sample;
            m_wakeUp.wait();
        }
        return {};
    }

    DecodePipeline& pipeline() { return m_pipeline; }

private:
    struct Notify {
        WakeUp& wakeUp;
        void operator()() const { wakeUp.notify(); }
    };

    std::stop_token m_stop;
    WakeUp m_wakeUp;
    std::stop_callback<Notify> m_onStop;
    DecodePipeline m_pipeline;
};

} // namespace stackreel
