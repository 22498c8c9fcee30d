#include "player/loop/HeadPrefetch.h"

#include "player/base/DetachedThreads.h"
#include "player/base/WakeUp.h"
#include "player/loop/LoopFeeder.h"
#include "player/pictures/FrameReader.h"

#include <mutex>
#include <stdexcept>

namespace stackreel
{

struct HeadPrefetch::Job {
    SourceFile file;
    LoopRange range;
    PictureSize box;
    std::size_t budget;
    WakeUp wakeUp;

    std::mutex mutex;
    std::function<void()> wake; ///< none once the prefetch is cancelled
    std::shared_ptr<const KeptFrames> result;
    bool finished = false;

    bool isCancelled()
    {
        const std::lock_guard lock(mutex);
        return !wake;
    }

    std::shared_ptr<const KeptFrames> prefetch()
    {
        FrameReader reader(file, box, [this] { wakeUp.notify(); });
        LoopFeeder feeder(reader, range, budget);
        feeder.beginAt(range.start);
        QueuedFrame frame;
        while (!feeder.kept() && !isCancelled()) {
            const LoopFeeder::Step step = feeder.step(frame);
            if (step == LoopFeeder::Step::failed)
                break;
            if (step == LoopFeeder::Step::waiting)
                wakeUp.wait(feeder.deadline());
        }
        return feeder.kept();
    }

    void run()
    {
        std::shared_ptr<const KeptFrames> frames;
        try {
            frames = prefetch();
        } catch (const std::runtime_error&) {
            // An element of GStreamer is missing. The player's own reader fails in the same way.
        }
        const std::lock_guard lock(mutex);
        result = std::move(frames);
        finished = true;
        if (wake)
            wake();
    }
};

HeadPrefetch::HeadPrefetch(SourceFile file, LoopRange range, PictureSize box, std::size_t budget,
                           std::function<void()> wake)
    : m_job(std::make_shared<Job>())
{
    m_job->file = std::move(file);
    m_job->range = range;
    m_job->box = box;
    m_job->budget = budget;
    m_job->wake = std::move(wake);
    runDetached([job = m_job] { job->run(); });
}

HeadPrefetch::~HeadPrefetch()
{
    {
        const std::lock_guard lock(m_job->mutex);
        m_job->wake = nullptr;
    }
    m_job->wakeUp.notify();
}

LoopRange HeadPrefetch::range() const
{
    return m_job->range;
}

PictureSize HeadPrefetch::box() const
{
    return m_job->box;
}

bool HeadPrefetch::isFinished() const
{
    const std::lock_guard lock(m_job->mutex);
    return m_job->finished;
}

std::shared_ptr<const KeptFrames> HeadPrefetch::result() const
{
    const std::lock_guard lock(m_job->mutex);
    return m_job->result;
}

} // namespace stackreel
