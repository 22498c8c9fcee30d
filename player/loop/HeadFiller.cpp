#include "player/loop/HeadFiller.h"

#include "player/base/ThreadReaper.h"
#include "player/base/WakeUp.h"
#include "player/loop/LoopFeeder.h"
#include "player/pictures/FrameReader.h"

#include <mutex>
#include <stdexcept>

namespace stackreel
{

struct HeadFiller::Job {
    SourceFile file;
    LoopRange range;
    PictureSize box;
    std::size_t budget;
    WakeUp wakeUp;

    std::mutex mutex;
    std::function<void()> wake; ///< none once nobody waits
    std::shared_ptr<const KeptFrames> result;
    bool over = false;

    bool isAbandoned()
    {
        const std::lock_guard lock(mutex);
        return !wake;
    }

    std::shared_ptr<const KeptFrames> gather()
    {
        FrameReader reader(file, box, [this] { wakeUp.notify(); });
        LoopFeeder feeder(reader, range, budget);
        feeder.beginAt(range.start);
        QueuedFrame frame;
        while (!feeder.kept() && !isAbandoned()) {
            const LoopFeeder::Step step = feeder.step(frame);
            if (step == LoopFeeder::Step::failed || step == LoopFeeder::Step::finished)
                break;
            if (step == LoopFeeder::Step::waiting)
                wakeUp.wait(feeder.deadline());
        }
        return feeder.kept();
    }

    void run()
    {
        std::shared_ptr<const KeptFrames> gathered;
        try {
            gathered = gather();
        } catch (const std::runtime_error&) {
            // Without the elements nothing can be gathered, and the player finds that out for itself.
        }
        const std::lock_guard lock(mutex);
        result = std::move(gathered);
        over = true;
        if (wake)
            wake();
    }
};

HeadFiller::HeadFiller(SourceFile file, LoopRange range, PictureSize box, std::size_t budget,
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

HeadFiller::~HeadFiller()
{
    {
        const std::lock_guard lock(m_job->mutex);
        m_job->wake = nullptr;
    }
    m_job->wakeUp.notify();
}

LoopRange HeadFiller::range() const
{
    return m_job->range;
}

PictureSize HeadFiller::box() const
{
    return m_job->box;
}

bool HeadFiller::isOver() const
{
    const std::lock_guard lock(m_job->mutex);
    return m_job->over;
}

std::shared_ptr<const KeptFrames> HeadFiller::result() const
{
    const std::lock_guard lock(m_job->mutex);
    return m_job->result;
}

} // namespace stackreel
