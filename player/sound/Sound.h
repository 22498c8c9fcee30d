#pragma once

#include "player/base/SharedClock.h"
#include "player/loop/QueuedFrame.h"
#include "player/sound/SoundOutput.h"
#include "player/sound/SoundRuns.h"
#include "player/source/SourceFile.h"

#include <memory>

namespace stackreel
{

/// The sound that goes with a player's pictures, on a thread of its own: decoded by a pipeline of its own and
/// played in step with the pictures' clock, which never waits for it. Whatever goes wrong with sound leaves
/// silence. While nothing is to be heard, nothing is decoded and no device is open, nor is one for a file
/// that has no sound.
///
/// The calls return at once; all are made on one thread.
class Sound
{
public:
    Sound(MakeSoundSink makeSink, std::shared_ptr<const SharedClock> clock);
    Sound(const Sound&) = delete;
    Sound& operator=(const Sound&) = delete;
    /// Does not wait for the device.
    ~Sound();

    /// The pictures are those of a range of a file from now on.
    void open(const SourceFile& file, LoopRange range);
    /// The pictures jump to a frame.
    void jump(const QueuedFrame& frame);
    /// A frame was queued after those before it.
    void follow(const QueuedFrame& frame);
    /// Whether the sound is to be heard while the clock runs.
    void setAudible(bool audible);

private:
    struct Job;

    std::shared_ptr<const SharedClock> m_clock;
    std::shared_ptr<Job> m_job;
    bool m_started = false;
};

} // namespace stackreel
