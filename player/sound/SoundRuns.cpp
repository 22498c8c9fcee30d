#include "player/sound/SoundRuns.h"

#include <algorithm>

namespace stackreel
{

void SoundRuns::follow(const QueuedFrame& frame, Nanoseconds played)
{
    if (!m_runs.empty() && m_runs.back().iteration == frame.iteration)
        return;
    while (m_runs.size() > 1 && m_runs[1].begins(m_range) <= played)
        m_runs.pop_front();
    m_runs.push_back({frame.iteration, frame.due - (frame.position - m_range.start), frame.position});
}

const SoundRuns::Run* SoundRuns::at(Nanoseconds played) const
{
    const Run* found = m_runs.empty() ? nullptr : &m_runs.front();
    for (const Run& run : m_runs)
        if (run.begins(m_range) <= played)
            found = &run;
    return found;
}

const SoundRuns::Run* SoundRuns::find(std::uint64_t iteration) const
{
    const auto found = std::find_if(m_runs.begin(), m_runs.end(),
                                    [iteration](const Run& run) { return run.iteration == iteration; });
    return found == m_runs.end() ? nullptr : &*found;
}

const SoundRuns::Run* SoundRuns::after(std::uint64_t iteration) const
{
    const auto found = std::find_if(m_runs.begin(), m_runs.end(),
                                    [iteration](const Run& run) { return run.iteration > iteration; });
    return found == m_runs.end() ? nullptr : &*found;
}

Nanoseconds SoundRuns::endOf(const Run& run) const
{
    const Run* next = find(run.iteration + 1);
    return next ? std::min(m_range.end, m_range.start + next->begins(m_range) - run.base) : m_range.end;
}

} // namespace stackreel
