#pragma once

#include "player/base/PlayerDelays.h"
#include "player/base/SharedClock.h"
#include "player/loop/QueuedFrame.h"
#include "player/sound/SoundOutput.h"
#include "player/sound/SoundRuns.h"
#include "player/source/SourceFile.h"

#include <memory>

namespace stackreel
{

/// The sound of a player, on a thread of its own: decoded by a pipeline of its own and played by the
/// pictures' clock, which never waits for it. After a failure of the file's sound there is silence. A device
/// that fails after it has played is opened again until that succeeds. While the sound is not audible, file
/// and device stay open for `PlayerDelays::idle`, so that playback soon after a pause starts with its sound.
/// A file without sound opens no device.
///
/// The calls return at once; all are made on one thread.
class Sound
{
public:
    Sound(MakeSoundSink makeSink, std::shared_ptr<const SharedClock> clock, PlayerDelays delays);
    Sound(const Sound&) = delete;
    Sound& operator=(const Sound&) = delete;
    /// Does not wait for the device.
    ~Sound();

    /// From now on the pictures are those of this range of a file.
    void open(const SourceFile& file, LoopRange range);
    /// The pictures jump to a frame.
    void jump(const QueuedFrame& frame);
    /// A frame was queued after those before it.
    void follow(const QueuedFrame& frame);
    /// Whether the sound is played while the clock runs.
    void setAudible(bool audible);

private:
    struct Job;

    std::shared_ptr<const SharedClock> m_clock;
    std::shared_ptr<Job> m_job;
    bool m_started = false;
};

} // namespace stackreel
