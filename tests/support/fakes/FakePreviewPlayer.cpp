#include "tests/support/fakes/FakePreviewPlayer.h"

#include <utility>

namespace stackreel
{

FakePreviewPlayer::FakePreviewPlayer(std::shared_ptr<Journal> journal, int number)
    : m_journal(std::move(journal)), m_name("player " + std::to_string(number))
{
}

void FakePreviewPlayer::note(const std::string& what) const
{
    m_journal->note(m_name + ": " + what);
}

void FakePreviewPlayer::tick(MediaTime time) const
{
    const auto observers = m_observers;
    for (const auto& [token, observer] : observers)
        observer(time);
}

void FakePreviewPlayer::open(const std::filesystem::path& file, MediaTimeRange range)
{
    m_opened = {file, range};
    note("open " + file.string() + " from " + described(range.start) + " for " + described(range.duration));
}

void FakePreviewPlayer::close()
{
    m_opened.reset();
    note("close");
}

void FakePreviewPlayer::play()
{
    m_playing = true;
    note("play");
}

void FakePreviewPlayer::pause()
{
    m_playing = false;
    note("pause");
}

void FakePreviewPlayer::seek(MediaTime time)
{
    note("seek to " + described(time));
}

void FakePreviewPlayer::setMuted(bool muted)
{
    m_muted = muted;
    note(muted ? "mute" : "unmute");
}

PlayerState FakePreviewPlayer::state() const
{
    using Kind = PlayerState::Kind;
    if (!m_opened)
        return {Kind::empty, {}};
    return {m_playing ? Kind::playing : Kind::paused, {}};
}

PreviewPlayer::TimeObserverToken FakePreviewPlayer::addPeriodicTimeObserver(MediaTime interval,
                                                                            TimeObserver observer)
{
    m_observers[++m_lastToken] = std::move(observer);
    note("observe every " + described(interval) + " as " + std::to_string(m_lastToken));
    return m_lastToken;
}

void FakePreviewPlayer::removeTimeObserver(TimeObserverToken token)
{
    m_observers.erase(token);
    note("remove observer " + std::to_string(token));
}

void FakePreviewPlayer::setVideoOutput(std::shared_ptr<VideoOutput> output)
{
    note(output ? "attach output" : "detach output");
    m_output = std::move(output);
}

void FakePreviewPlayer::setVideoSize(int width, int height)
{
    note("show at " + std::to_string(width) + " × " + std::to_string(height));
}

} // namespace stackreel
