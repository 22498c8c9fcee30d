#include "platform/gstreamer/SoundFeeder.h"

#include "platform/gstreamer/WakeUp.h"
#include "tests/player/MarkedClip.h"

#include <gtest/gtest.h>

#include <cmath>

namespace stackreel
{

namespace
{

const MarkedClip ramp{.name = "ramp.mov",
                      .frames = 120,
                      .keyInterval = 250,
                      .sound = true,
                      .tone = "aevalsrc='t/16|t/16':s=48000",
                      .output = "-c:a pcm_s16le"};

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

/// Takes sound from a feeder without a player around it.
class SoundFeeding
{
public:
    explicit SoundFeeding(const std::filesystem::path& file) : m_reader(file, [this] { m_wakeUp.notify(); })
    {
    }

    void beginAt(const SoundRuns& runs, Nanoseconds played) { m_feeder.beginAt(runs, played); }
    /// All that is due before a played time; `runs` goes at least so far.
    std::vector<SoundFeeder::DuePiece> until(const SoundRuns& runs, Nanoseconds played)
    {
        std::vector<SoundFeeder::DuePiece> pieces;
        SoundFeeder::DuePiece next;
        while (true) {
            const SoundFeeder::Step step = m_feeder.step(runs, next);
            if (step == SoundFeeder::Step::waiting)
                m_wakeUp.wait();
            if (step != SoundFeeder::Step::piece)
                continue;
            if (next.due >= played)
                return pieces;
            pieces.push_back(next);
        }
    }

private:
    WakeUp m_wakeUp;
    SoundReader m_reader;
    SoundFeeder m_feeder{m_reader};
};

} // namespace

TEST(SoundPieceTest, isCutToTheNearestSample)
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

TEST(SoundRunsTest, areThoseOfThePictures)
{
    SoundRuns runs({second, 2 * second});
    EXPECT_EQ(runs.at(0), nullptr);
    runs.follow(frameAt(0, second * 3 / 2, 0), 0);
    runs.follow(frameAt(second / 4, second * 7 / 4, 0), 0);
    EXPECT_EQ(runs.at(0)->base, -second / 2);
    EXPECT_EQ(runs.endOf(*runs.at(0)), 2 * second);
    runs.follow(frameAt(second / 2, second, 1), 0);
    // The pictures had only 0.9 s of the range.
    runs.follow(frameAt(second * 14 / 10, second, 2), 0);
    EXPECT_EQ(runs.at(second)->iteration, 1U);
    EXPECT_EQ(runs.endOf(*runs.find(1)), second * 19 / 10);
    runs.follow(frameAt(second * 23 / 10, second, 3), second * 15 / 10);
    EXPECT_EQ(runs.find(0), nullptr) << "it is over";
    EXPECT_NE(runs.find(2), nullptr);
}

TEST(SoundFeederTest, repeatsTheRangeToTheSample)
{
    SoundFeeding feeding(ramp.file());
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
        const Nanoseconds expected = start + (at + length / 2) % length;
        EXPECT_NEAR(piece.samples.front() * 16 / 32768.0, toSeconds(expected), 0.001);
        EXPECT_EQ(piece.samples[0], piece.samples[1]);
        due = at + piece.end() - piece.position;
    }
    EXPECT_NEAR(toSeconds(due), 2.25, 0.001);
}

TEST(SoundFeederTest, leavesOutTheRunsThatAreOverWhenItFellBehind)
{
    SoundFeeding feeding(ramp.file());
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

TEST(SoundFeederTest, beginsInTheMiddle)
{
    SoundFeeding feeding(ramp.file());
    SoundRuns runs({second, 3 * second});
    runs.follow(frameAt(0, second, 0), 0);
    feeding.beginAt(runs, second / 2);
    const auto pieces = feeding.until(runs, second);
    ASSERT_FALSE(pieces.empty());
    EXPECT_NEAR(toSeconds(pieces.front().due), 0.5, 0.0001);
    EXPECT_NEAR(pieces.front().piece.samples.front() * 16 / 32768.0, 1.5, 0.001);
}

} // namespace stackreel
