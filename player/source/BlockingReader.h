#pragma once

#include "player/base/WakeUp.h"
#include "player/source/DecodePipeline.h"
#include "player/source/EndOfStream.h"

#include <algorithm>
#include <optional>
#include <stop_token>

namespace stackreel
{

/// A pipeline whose samples its thread waits for.
class BlockingReader
{
public:
    /// As with `DecodePipeline`. Waiting ends when `stop` fires.
    BlockingReader(const SourceFile& file, DecodePipeline::Content content, std::stop_token stop)
        : m_stop(std::move(stop)),
          m_onStop(m_stop, Notify{m_wakeUp}),
          m_pipeline(file, content, Notify{m_wakeUp}),
          m_end(std::chrono::seconds(2))
    {
    }

    /// The next sample; none at the end, when `stop` fires, or when none came before `latest`.
    GstSamplePtr next(Clock::Instant latest = Clock::Instant::max())
    {
        while (!m_stop.stop_requested() && std::chrono::steady_clock::now() < latest) {
            const bool over = m_end.isReached(m_pipeline);
            GstSamplePtr sample = m_pipeline.tryPull();
            if (sample)
                m_end.postpone();
            if (sample || over)
                return sample;
            wait(latest);
        }
        return {};
    }

    DecodePipeline& pipeline() { return m_pipeline; }

private:
    struct Notify {
        WakeUp& wakeUp;
        void operator()() const { wakeUp.notify(); }
    };

    void wait(Clock::Instant latest)
    {
        const Clock::Instant until = std::min(latest, m_end.deadline().value_or(latest));
        if (until == Clock::Instant::max())
            m_wakeUp.wait();
        else
            m_wakeUp.wait(until);
    }

    std::stop_token m_stop;
    WakeUp m_wakeUp;
    std::stop_callback<Notify> m_onStop;
    DecodePipeline m_pipeline;
    EndOfStream m_end;
};

} // namespace stackreel
