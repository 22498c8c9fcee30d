#include "player/sound/SoundFeeder.h"

#include "player/base/WakeUp.h"
#include "tests/player/MarkedClip.h"
#include "tests/support/Awaited.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace stackreel
{

namespace
{

QueuedFrame frameAt(Nanoseconds due, Nanoseconds position, std::uint64_t iteration)
{
    return {std::make_shared<PlanarFrame>(), due, position, iteration, false};
}

SoundPiece pieceOf(Nanoseconds position, std::size_t moments)
{
    SoundPiece piece;
    piece.position = position;
    piece.samples.resize(2 * moments);
    for (std::size_t i = 0; i < piece.samples.size(); ++i)
        piece.samples[i] = static_cast<std::int16_t>(i / 2);
    return piece;
}

/// Takes sound from a `SoundFeeder` alone, without a player.
class SoundFeeding
{
public:
    explicit SoundFeeding(const std::filesystem::path& file, std::size_t budget = SoundFeeder::usualBudget)
        : m_reader(file, [this] { m_wakeUp.notify(); }), m_feeder(m_reader, budget)
    {
    }

    void beginAt(const SoundRuns& runs, Nanoseconds played) { m_feeder.beginAt(runs, played); }
    /// The pieces that are due before the time `played`. `runs` has to reach that time.
    std::vector<SoundFeeder::DuePiece> until(const SoundRuns& runs, Nanoseconds played)
    {
        std::vector<SoundFeeder::DuePiece> pieces;
        SoundFeeder::DuePiece next;
        const auto latest = std::chrono::steady_clock::now() + ceiling;
        while (std::chrono::steady_clock::now() < latest) {
            const SoundFeeder::Step step = m_feeder.step(runs, next);
            if (step == SoundFeeder::Step::waiting)
                m_wakeUp.wait(std::min(latest, m_feeder.deadline().value_or(latest)));
            if (step != SoundFeeder::Step::piece)
                continue;
            if (next.due >= played)
                return pieces;
            pieces.push_back(next);
        }
        ADD_FAILURE() << "there is no more sound";
        return pieces;
    }

private:
    WakeUp m_wakeUp;
    SoundReader m_reader;
    SoundFeeder m_feeder;
};

/// Consecutive runs of a range, without a gap.
SoundRuns repeatedRuns(LoopRange range, std::uint64_t count)
{
    SoundRuns runs(range);
    for (std::uint64_t iteration = 0; iteration < count; ++iteration)
        runs.follow(
            frameAt(static_cast<Nanoseconds>(iteration) * (range.end - range.start), range.start, iteration),
            0);
    return runs;
}

/// The left channel's samples from played time 0 on. Expects no gap between them.
std::vector<int> leftSamples(const std::vector<SoundFeeder::DuePiece>& pieces)
{
    std::vector<int> samples;
    for (const auto& [piece, due] : pieces) {
        EXPECT_NEAR(static_cast<double>(due), static_cast<double>(samples.size()) * 1e9 / 48000, 22000)
            << "half a sample";
        for (std::size_t i = 0; i < piece.samples.size(); i += 2)
            samples.push_back(piece.samples[i]);
    }
    return samples;
}

/// A clip whose samples count from 0 to 999, again and again.
MarkedClip countingClip(const std::string& name)
{
    return {.name = name,
            .frames = 120,
            .keyInterval = 250,
            .sound = true,
            .tone = "aevalsrc='mod(n,1000)/32768|mod(n,1000)/32768':s=48000",
            .output = "-c:a pcm_s16le"};
}

/// A clip with a sine of 440 Hz on all channels. Half a second holds a whole number of its periods.
MarkedClip sineClip(const std::string& name, int rate, int channels, const std::string& codec)
{
    std::string each = "0.5*sin(2*PI*440*t)";
    for (int channel = 1; channel < channels; ++channel)
        each += "|0.5*sin(2*PI*440*t)";
    return {.name = name,
            .frames = 120,
            .keyInterval = 250,
            .sound = true,
            .tone = "aevalsrc='" + each + "':s=" + std::to_string(rate),
            .output = "-c:a " + codec};
}

} // namespace

TEST(SoundPieceTest, IsCutToTheNearestSample)
{
    SoundPiece piece = pieceOf(second, 480);
    EXPECT_EQ(piece.end(), second + 10 * millisecond);
    piece.cut(second + 2 * millisecond, second + 7 * millisecond);
    EXPECT_EQ(piece.position, second + 2 * millisecond);
    EXPECT_EQ(piece.samples.size(), 2U * 240);
    EXPECT_EQ(piece.samples.front(), 96);
    piece.cut(0, 3 * second);
    EXPECT_EQ(piece.samples.size(), 2U * 240) << "nothing lies outside";
    piece.cut(3 * second, 4 * second);
    EXPECT_TRUE(piece.isEmpty());
}

TEST(SoundRunsTest, FollowTheRunsOfTheVideo)
{
    SoundRuns runs({second, 2 * second});
    EXPECT_EQ(runs.at(0), nullptr);
    runs.follow(frameAt(0, second * 3 / 2, 0), 0);
    runs.follow(frameAt(second / 4, second * 7 / 4, 0), 0);
    EXPECT_EQ(runs.at(0)->base, -second / 2);
    EXPECT_EQ(runs.endOf(*runs.at(0)), 2 * second);
    runs.follow(frameAt(second / 2, second, 1), 0);
    // The video covered only 0.9 s of the range.
    runs.follow(frameAt(second * 14 / 10, second, 2), 0);
    EXPECT_EQ(runs.at(second)->iteration, 1U);
    EXPECT_EQ(runs.endOf(*runs.find(1)), second * 19 / 10);
    runs.follow(frameAt(second * 23 / 10, second, 3), second * 15 / 10);
    EXPECT_EQ(runs.find(0), nullptr) << "it is over";
    EXPECT_NE(runs.find(2), nullptr);
}

TEST(SoundFeederTest, RepeatsTheRangeWithSampleAccuracy)
{
    SoundFeeding feeding(soundRamp.file());
    const Nanoseconds start = second;
    const Nanoseconds length = second / 2;
    SoundRuns runs({start, start + length});
    runs.follow(frameAt(0, start + length / 2, 0), 0);
    for (std::uint64_t iteration = 1; iteration < 6; ++iteration)
        runs.follow(frameAt(length / 2 + static_cast<Nanoseconds>(iteration - 1) * length, start, iteration),
                    0);
    feeding.beginAt(runs, 0);
    Nanoseconds due = 0;
    for (const auto& [piece, at] : feeding.until(runs, length / 2 + 4 * length)) {
        ASSERT_NEAR(static_cast<double>(at), static_cast<double>(due), 22000) << "half a sample";
        const Nanoseconds expected = start + (at + 22000 + length / 2) % length;
        EXPECT_NEAR(piece.samples.front() * 16 / 32768.0, toSeconds(expected), 0.001);
        EXPECT_EQ(piece.samples[0], piece.samples[1]);
        due = at + piece.end() - piece.position;
    }
    EXPECT_GE(toSeconds(due), 2.249);
}

TEST(SoundFeederTest, SkipsFinishedRunsWhenItIsLate)
{
    SoundFeeding feeding(soundRamp.file());
    const Nanoseconds length = second / 2;
    SoundRuns runs({second, second + length});
    runs.follow(frameAt(0, second, 0), 0);
    feeding.beginAt(runs, 0);
    feeding.until(runs, length / 2);
    for (std::uint64_t iteration = 1; iteration < 6; ++iteration)
        runs.follow(frameAt(static_cast<Nanoseconds>(iteration) * length, second, iteration), 9 * length / 2);
    ASSERT_EQ(runs.find(1), nullptr) << "it is over";
    const auto pieces = feeding.until(runs, 5 * length);
    ASSERT_FALSE(pieces.empty());
    EXPECT_GT(pieces.back().due, 4 * length);
}

TEST(SoundFeederTest, BeginsInTheMiddle)
{
    SoundFeeding feeding(soundRamp.file());
    SoundRuns runs({second, 3 * second});
    runs.follow(frameAt(0, second, 0), 0);
    feeding.beginAt(runs, second / 2);
    const auto pieces = feeding.until(runs, second);
    ASSERT_FALSE(pieces.empty());
    EXPECT_NEAR(toSeconds(pieces.front().due), 0.5, 0.0001);
    EXPECT_NEAR(pieces.front().piece.samples.front() * 16 / 32768.0, 1.5, 0.001);
}

TEST(SoundFeederTest, LosesNoSampleWithCoarseTimeStamps)
{
    for (const char* name : {"counting.mov", "counting.mkv"}) {
        SoundFeeding feeding(countingClip(name).file());
        constexpr std::size_t run = 96000;
        const SoundRuns runs = repeatedRuns({second, 3 * second}, 3);
        feeding.beginAt(runs, 0);
        const std::vector<int> samples = leftSamples(feeding.until(runs, 4 * second));
        ASSERT_GE(samples.size(), 2 * run) << name;
        EXPECT_NEAR(samples[0], 0, 48) << "a millisecond";
        int slips = 0;
        for (std::size_t i = 1; i < 2 * run; ++i)
            slips += i % run != 0 && samples[i] != (samples[i - 1] + 1) % 1000;
        EXPECT_EQ(slips, 0) << name;
        EXPECT_EQ(samples[run], samples[0]) << name;
    }
}

TEST(SoundFeederTest, RepeatsARangeThatIsTooLongToKeep)
{
    constexpr std::size_t run = 24000;
    SoundFeeding feeding(countingClip("counting.mov").file(), run);
    const SoundRuns runs = repeatedRuns({second, second * 3 / 2}, 5);
    feeding.beginAt(runs, 0);
    const std::vector<int> samples = leftSamples(feeding.until(runs, 2 * second));
    ASSERT_GE(samples.size(), 4 * run);
    for (std::size_t i = 0; i < 4 * run; ++i)
        ASSERT_EQ(samples[i], static_cast<int>(i % run % 1000)) << i;
}

TEST(SoundFeederTest, ContinuesTheWaveformAcrossAWrap)
{
    const struct {
        const char* name;
        int rate, channels;
        const char* codec;
        double error;
    } rows[] = {
        {"hum48.mov", 48000, 2, "pcm_s16le", 2},
        // About one sample off, because the range's ends lie between the resampled samples.
        {"hum44.mov", 44100, 2, "pcm_s16le", 1200},
        {"hum22.mov", 22050, 2, "pcm_s16le", 1200},
        {"hum_mp3.mov", 44100, 2, "libmp3lame -b:a 320k", 1200},
        {"hum_aac.mov", 48000, 2, "aac -b:a 320k", 400},
        {"hum_mono.mov", 48000, 1, "pcm_s16le", 2},
        {"hum_six.mov", 48000, 6, "pcm_s16le", 40},
    };
    for (const auto& row : rows) {
        // Once from memory, and once decoded again for each run.
        for (const std::size_t budget : {SoundFeeder::usualBudget, std::size_t{0}}) {
            SoundFeeding feeding(sineClip(row.name, row.rate, row.channels, row.codec).file(), budget);
            const SoundRuns runs = repeatedRuns({second, second * 3 / 2}, 4);
            feeding.beginAt(runs, 0);
            const std::vector<int> samples = leftSamples(feeding.until(runs, second * 3 / 2));
            ASSERT_GE(samples.size(), 72000U) << row.name;
            double worst = 0;
            std::size_t where = 0;
            for (std::size_t i = 0; i < 72000; ++i) {
                const double expected = 16384 * std::sin(2 * M_PI * 440 * static_cast<double>(i) / 48000);
                if (const double off = std::abs(samples[i] - expected); off > worst) {
                    worst = off;
                    where = i;
                }
            }
            EXPECT_LE(worst, row.error) << row.name << " at " << where;
        }
    }
}

} // namespace stackreel
