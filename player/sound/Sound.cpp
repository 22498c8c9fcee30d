#include "player/sound/Sound.h"

#include "player/base/DetachedThreads.h"
#include "player/base/WakeUp.h"
#include "player/sound/SoundFeeder.h"

#include <algorithm>
#include <mutex>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;

/// A piece is given to the device this long before it is due. With more, sound would go on after the
/// pictures' clock has waited for a late frame; with less, it might come too late for the device.
constexpr Nanoseconds lead = 150 * millisecond;
/// How often the clock is read.
constexpr auto pollInterval = 20ms;

} // namespace

struct Sound::Job {
    /// What to play; guarded by the mutex.
    struct Plan {
        SourceFile file; ///< none when its path is empty
        SoundRuns runs;
        std::uint64_t opening = 0; ///< counts the calls of `open`
        std::uint64_t jump = 0;    ///< counts the calls of `jump`
        bool audible = false;
        bool quit = false;
    };

    MakeSoundSink makeSink;
    std::shared_ptr<const SharedClock> clock;
    PlayerDelays delays;
    WakeUp wakeUp;
    std::mutex mutex;
    Plan plan;

    // The job's thread only.
    std::unique_ptr<SoundReader> reader;
    std::unique_ptr<SoundFeeder> feeder;
    std::unique_ptr<SoundOutput> output;
    std::optional<SoundFeeder::DuePiece> next;
    std::uint64_t opened = 0;
    std::optional<std::uint64_t> startedJump; ///< the jump that playback started from
    bool failed = false;                      ///< the file has no sound, or it cannot be played
    bool hadDevice = false;                   ///< a device has played
    std::optional<Clock::Instant> retry;      ///< when to open the device again
    std::optional<Clock::Instant> idleSince;  ///< not audible

    template <typename Change>
    void change(Change change)
    {
        {
            const std::lock_guard lock(mutex);
            change(plan);
        }
        wakeUp.notify();
    }
    Plan read()
    {
        const std::lock_guard lock(mutex);
        return plan;
    }

    void run()
    {
        for (Plan now = read(); !now.quit; now = read()) {
            try {
                step(now);
            } catch (const std::runtime_error&) {
                fail();
            }
        }
        close();
    }

    void step(const Plan& now)
    {
        if (!now.audible || now.file.path().empty()) {
            rest(now);
        } else if (!prepare(now)) {
            wakeUp.wait(nextAttempt());
        } else if (!clock->isRunning()) {
            pause();
            wakeUp.wait(std::chrono::steady_clock::now() + pollInterval);
        } else if (!advance(now)) {
            wakeUp.wait(std::chrono::steady_clock::now() + pollInterval);
        }
    }

    /// Closes file and device when they were not needed for a while.
    void rest(const Plan& now)
    {
        const auto time = std::chrono::steady_clock::now();
        if (!idleSince)
            idleSince = time;
        if (opened != now.opening)
            closeFile();
        if (!output || output->failed() || time - *idleSince >= delays.idle) {
            close();
            wakeUp.wait();
        } else {
            pause();
            wakeUp.wait(*idleSince + delays.idle);
        }
    }

    std::optional<Clock::Instant> nextAttempt() const
    {
        const auto reading = reader ? reader->deadline() : std::nullopt;
        return reading && retry ? std::min(*reading, *retry) : (retry ? retry : reading);
    }

    void closeFile()
    {
        next.reset();
        feeder.reset();
        reader.reset();
        startedJump.reset();
        opened = 0;
        failed = false;
    }

    void close()
    {
        closeFile();
        output.reset();
        retry.reset();
    }

    /// Plays nothing until another range is opened or the sound becomes audible again.
    void fail()
    {
        const std::uint64_t opening = opened;
        close();
        opened = opening;
        failed = true;
    }

    void pause()
    {
        output->silence();
        next.reset();
        startedJump.reset();
    }

    /// Opens the file and then the device, which stays open from one file to the next. False until both are
    /// open.
    bool prepare(const Plan& now)
    {
        idleSince.reset();
        if (retry && std::chrono::steady_clock::now() >= *retry)
            retry.reset();
        if (opened != now.opening)
            openFile(now);
        if (!failed && reader->isEmpty())
            fail();
        if (!failed && !output && !retry && reader->started())
            output = std::make_unique<SoundOutput>(makeSink);
        if (output && output->failed())
            loseDevice();
        return !failed && output;
    }

    void openFile(const Plan& now)
    {
        closeFile();
        if (output)
            output->silence();
        opened = now.opening;
        reader = std::make_unique<SoundReader>(now.file, [this] { wakeUp.notify(); });
        feeder = std::make_unique<SoundFeeder>(*reader);
    }

    /// A device that has played may come back. Without one from the start there is silence.
    void loseDevice()
    {
        if (!hadDevice)
            return fail();
        output.reset();
        next.reset();
        startedJump.reset();
        retry = std::chrono::steady_clock::now() + delays.soundRetry;
    }

    /// Gives the next piece to the device when its time has come. False when there is nothing to do at once.
    bool advance(const Plan& now)
    {
        const Clock time = clock->read();
        const Nanoseconds played = time.at(std::chrono::steady_clock::now());
        if (startedJump != now.jump) {
            output->silence();
            next.reset();
            startedJump = now.jump;
            feeder->beginAt(now.runs, played);
        }
        if (!next) {
            SoundFeeder::DuePiece piece;
            const SoundFeeder::Step step = feeder->step(now.runs, piece);
            if (step == SoundFeeder::Step::piece)
                next = std::move(piece);
            return step != SoundFeeder::Step::waiting;
        }
        if (next->due > played + lead)
            return false;
        const auto piece = *std::exchange(next, std::nullopt);
        if (piece.due + piece.piece.end() - piece.piece.position > played) {
            output->play(piece.piece, time.when(piece.due));
            hadDevice = true;
        }
        return true;
    }
};

Sound::Sound(MakeSoundSink makeSink, std::shared_ptr<const SharedClock> clock, PlayerDelays delays)
    : m_clock(std::move(clock)), m_job(std::make_shared<Job>())
{
    m_job->makeSink = std::move(makeSink);
    m_job->clock = m_clock;
    m_job->delays = delays;
}

Sound::~Sound()
{
    m_job->change([](Job::Plan& plan) { plan.quit = true; });
}

void Sound::open(const SourceFile& file, LoopRange range)
{
    m_job->change([&](Job::Plan& plan) {
        plan.file = file;
        plan.runs = SoundRuns(range);
        ++plan.opening;
    });
}

void Sound::jump(const QueuedFrame& frame)
{
    m_job->change([&](Job::Plan& plan) {
        plan.runs = SoundRuns(plan.runs.range());
        plan.runs.follow(frame, frame.due);
        ++plan.jump;
    });
}

void Sound::follow(const QueuedFrame& frame)
{
    const Nanoseconds played = m_clock->at(std::chrono::steady_clock::now());
    m_job->change([&](Job::Plan& plan) { plan.runs.follow(frame, played); });
}

void Sound::setAudible(bool audible)
{
    m_job->change([audible](Job::Plan& plan) { plan.audible = audible; });
    if (!audible || m_started)
        return;
    try {
        runDetached([job = m_job] { job->run(); });
        m_started = true;
    } catch (const std::system_error&) {
        // No thread can be started: silence until the sound becomes audible again.
    }
}

} // namespace stackreel
