#include "player/GstQueuePlayer.h"

#include "player/base/DetachedThreads.h"
#include "player/engine/PlayerEngine.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace stackreel
{

namespace
{

/// The engine's own thread may be gone by now, and whoever drops the last reference waits for the presenter's
/// thread and for whatever the decoder's closing takes. That must not be the main thread.
void leaveTheLast(std::shared_ptr<PlayerEngine> engine) noexcept
{
    try {
        runDetached([engine = std::move(engine)] {});
    } catch (const std::system_error&) {
        // No thread is to be had, so there is nobody else who could wait.
    }
}

} // namespace

GstQueuePlayer::GstQueuePlayer(MakeSoundSink makeSoundSink)
    : m_observers(std::make_shared<TimeObservers>()),
      m_engine(std::make_shared<PlayerEngine>(m_observers, std::move(makeSoundSink)))
{
    PlayerEngine::start(m_engine);
}

GstQueuePlayer::~GstQueuePlayer()
{
    m_observers->close();
    m_engine->presenter().setOutput(nullptr);
    m_engine->request([](PlayerRequest& request) { request.quit = true; });
    leaveTheLast(std::move(m_engine));
}

/// Numbers whatever makes the playhead jump; reports from before are of no interest any more.
std::uint64_t GstQueuePlayer::nextNumber()
{
    m_observers->expectJump(++m_number);
    return m_number;
}

std::uint64_t GstQueuePlayer::loop(const std::filesystem::path& file, MediaTimeRange range)
{
    const std::uint64_t number = nextNumber();
    const Nanoseconds start = std::max<Nanoseconds>(toNanoseconds(range.start), 0);
    const Nanoseconds length = std::max(toNanoseconds(range.duration), 2 * halfUnit);
    m_engine->request([&](PlayerRequest& request) {
        request.loop = {file, {start, start + length}, number, true};
        request.seek = {start, number};
    });
    return number;
}

void GstQueuePlayer::stopRepeating(std::uint64_t number)
{
    m_engine->request([number](PlayerRequest& request) {
        if (request.loop && request.loop->number == number)
            request.loop->repeating = false;
    });
}

void GstQueuePlayer::play()
{
    m_engine->request([](PlayerRequest& request) { request.playing = true; });
}

void GstQueuePlayer::pause()
{
    m_engine->request([](PlayerRequest& request) { request.playing = false; });
}

void GstQueuePlayer::seek(MediaTime time, MediaTime, MediaTime)
{
    if (time == MediaTime::indefinite())
        return;
    const PlayerRequest::Seek seek{std::max<Nanoseconds>(toNanoseconds(time), 0), nextNumber()};
    m_engine->request([seek](PlayerRequest& request) { request.seek = seek; });
}

void GstQueuePlayer::removeAllItems()
{
    const std::uint64_t number = nextNumber();
    m_engine->request([number](PlayerRequest& request) {
        request.loop.reset();
        request.seek = {0, number};
    });
}

void GstQueuePlayer::setMuted(bool muted)
{
    m_muted = muted;
    m_engine->request([muted](PlayerRequest& request) { request.muted = muted; });
}

void GstQueuePlayer::setActionAtItemEnd(ActionAtItemEnd action)
{
    m_engine->request([action](PlayerRequest& request) { request.atEnd = action; });
}

QueuePlayer::TimeObserverToken GstQueuePlayer::addPeriodicTimeObserver(MediaTime interval,
                                                                       TimeObserver observer)
{
    return m_observers->add(interval, std::move(observer));
}

void GstQueuePlayer::removeTimeObserver(TimeObserverToken token)
{
    m_observers->remove(token);
}

void GstQueuePlayer::setVideoOutput(std::shared_ptr<VideoOutput> output)
{
    m_engine->presenter().setOutput(std::move(output));
}

void GstQueuePlayer::setVideoSize(int width, int height)
{
    if (width > 0 && height > 0)
        m_engine->request([width, height](PlayerRequest& request) { request.box = {width, height}; });
}

} // namespace stackreel
