#include "player/GStreamerPlayer.h"

#include "player/base/DetachedThreads.h"
#include "player/engine/PlayerEngine.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace stackreel
{

namespace
{

/// Releases the engine on another thread. The engine's own thread may have ended, and the last owner waits
/// for the presenter's thread and for the decoder to close, which must not happen on the main thread.
void releaseOnAnotherThread(std::shared_ptr<PlayerEngine> engine) noexcept
{
    try {
        runDetached([engine = std::move(engine)] {});
    } catch (const std::system_error&) {
        // No thread can be started, so this one has to wait.
    }
}

} // namespace

GStreamerPlayer::GStreamerPlayer(MakeSoundSink makeSoundSink, PlayerDelays delays)
    : m_observers(std::make_shared<TimeObservers>()),
      m_engine(std::make_shared<PlayerEngine>(m_observers, std::move(makeSoundSink), delays))
{
    PlayerEngine::start(m_engine);
}

GStreamerPlayer::~GStreamerPlayer()
{
    m_observers->close();
    m_engine->presenter().setOutput(nullptr);
    m_engine->request([](PlayerRequest& request) { request.quit = true; });
    releaseOnAnotherThread(std::move(m_engine));
}

/// The number of the next jump. Reports of the time from before that jump are dropped.
std::uint64_t GStreamerPlayer::nextNumber()
{
    m_observers->expectJump(++m_number);
    return m_number;
}

void GStreamerPlayer::open(const std::filesystem::path& file, MediaTimeRange range)
{
    const std::uint64_t number = nextNumber();
    const Nanoseconds start = std::max<Nanoseconds>(toNanoseconds(range.start), 0);
    const Nanoseconds length = std::max(toNanoseconds(range.duration), 2 * halfUnit);
    m_engine->request([&](PlayerRequest& request) {
        request.loop = {file, {start, start + length}, number};
        request.seek = {start, number};
    });
}

void GStreamerPlayer::close()
{
    const std::uint64_t number = nextNumber();
    m_engine->request([number](PlayerRequest& request) {
        request.loop.reset();
        request.seek = {0, number};
    });
}

void GStreamerPlayer::play()
{
    m_engine->request([](PlayerRequest& request) { request.playing = true; });
}

void GStreamerPlayer::pause()
{
    m_engine->request([](PlayerRequest& request) { request.playing = false; });
}

void GStreamerPlayer::seek(MediaTime time)
{
    if (time == MediaTime::indefinite())
        return;
    const PlayerRequest::Seek seek{std::max<Nanoseconds>(toNanoseconds(time), 0), nextNumber()};
    m_engine->request([seek](PlayerRequest& request) { request.seek = seek; });
}

void GStreamerPlayer::setMuted(bool muted)
{
    m_engine->request([muted](PlayerRequest& request) { request.muted = muted; });
}

PlayerState GStreamerPlayer::state() const
{
    return m_engine->state();
}

PreviewPlayer::TimeObserverToken GStreamerPlayer::addPeriodicTimeObserver(MediaTime interval,
                                                                          TimeObserver observer)
{
    return m_observers->add(interval, std::move(observer));
}

void GStreamerPlayer::removeTimeObserver(TimeObserverToken token)
{
    m_observers->remove(token);
}

void GStreamerPlayer::setVideoOutput(std::shared_ptr<VideoOutput> output)
{
    m_engine->presenter().setOutput(std::move(output));
}

void GStreamerPlayer::setVideoSize(int width, int height)
{
    if (width > 0 && height > 0)
        m_engine->request([width, height](PlayerRequest& request) { request.box = {width, height}; });
}

} // namespace stackreel
