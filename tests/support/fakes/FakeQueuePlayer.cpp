#include "tests/support/fakes/FakeQueuePlayer.h"

#include <utility>

namespace stackreel
{

FakeQueuePlayer::FakeQueuePlayer(std::shared_ptr<Journal> journal, int number)
    : m_journal(std::move(journal)), m_name("player " + std::to_string(number))
{
}

void FakeQueuePlayer::note(const std::string& what) const
{
    m_journal->note(m_name + ": " + what);
}

void FakeQueuePlayer::tick(MediaTime time) const
{
    const auto observers = m_observers;
    for (const auto& [token, observer] : observers)
        observer(time);
}

void FakeQueuePlayer::play()
{
    m_playing = true;
    note("play");
}

void FakeQueuePlayer::pause()
{
    m_playing = false;
    note("pause");
}

void FakeQueuePlayer::seek(MediaTime time, MediaTime toleranceBefore, MediaTime toleranceAfter)
{
    std::string line = "seek to " + described(time);
    if (toleranceBefore != MediaTime() || toleranceAfter != MediaTime())
        line += " within " + described(toleranceBefore) + " and " + described(toleranceAfter);
    note(line);
}

void FakeQueuePlayer::removeAllItems()
{
    note("remove all items");
}

void FakeQueuePlayer::setMuted(bool muted)
{
    m_muted = muted;
    note(muted ? "mute" : "unmute");
}

void FakeQueuePlayer::setActionAtItemEnd(ActionAtItemEnd action)
{
    constexpr const char* names[] = {"advance", "pause", "none"};
    note(std::string("at item end ") + names[static_cast<int>(action)]);
}

QueuePlayer::TimeObserverToken FakeQueuePlayer::addPeriodicTimeObserver(MediaTime interval,
                                                                        TimeObserver observer)
{
    m_observers[++m_lastToken] = std::move(observer);
    note("observe every " + described(interval) + " as " + std::to_string(m_lastToken));
    return m_lastToken;
}

void FakeQueuePlayer::removeTimeObserver(TimeObserverToken token)
{
    m_observers.erase(token);
    note("remove observer " + std::to_string(token));
}

void FakeQueuePlayer::setVideoOutput(std::shared_ptr<VideoOutput> output)
{
    note(output ? "attach output" : "detach output");
    m_output = std::move(output);
}

void FakeQueuePlayer::setVideoSize(int width, int height)
{
    note("show at " + std::to_string(width) + " × " + std::to_string(height));
}

} // namespace stackreel
