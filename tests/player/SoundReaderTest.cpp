#include "player/sound/SoundReader.h"

#include "player/base/WakeUp.h"
#include "tests/player/MarkedClip.h"
#include "tests/support/Awaited.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

namespace stackreel
{

namespace
{

/// Reads a file's sound from its beginning and returns its end time.
Nanoseconds endOfSoundIn(const std::filesystem::path& file)
{
    WakeUp wakeUp;
    SoundReader reader(file, [&wakeUp] { wakeUp.notify(); });
    SoundPiece piece;
    Nanoseconds end = 0;
    while (true) {
        switch (reader.step(piece)) {
        case SoundReader::Step::piece:
            end = piece.end();
            break;
        case SoundReader::Step::end:
            return end;
        default:
            wakeUp.wait(reader.deadline());
        }
    }
}

/// The samples of the left channel by their number, counted from the file's beginning.
using Samples = std::map<std::int64_t, int>;

/// Reads from where the reader is, until `until` or the end.
Samples samplesFrom(SoundReader& reader, WakeUp& wakeUp, Nanoseconds until)
{
    Samples samples;
    SoundPiece piece;
    while (true) {
        const SoundReader::Step step = reader.step(piece);
        if (step == SoundReader::Step::end)
            return samples;
        if (step == SoundReader::Step::waiting) {
            wakeUp.wait(reader.deadline());
            continue;
        }
        const std::int64_t first = (piece.position * SoundPiece::rate + second / 2) / second;
        for (std::size_t i = 0; i < piece.samples.size(); i += SoundPiece::channels)
            samples[first + static_cast<std::int64_t>(i / SoundPiece::channels)] = piece.samples[i];
        if (piece.end() >= until)
            return samples;
    }
}

} // namespace

TEST(SoundReader, DeliversTheSoundAtATimeOfAFragmentedFile)
{
    for (const std::string flags : {"frag_keyframe", "frag_keyframe+empty_moov", "cmaf+frag_keyframe"}) {
        const MarkedClip clip{.name = "fragments-" + flags + ".mp4",
                              .frames = 200,
                              .keyInterval = 30,
                              .sound = true,
                              .tone = "aevalsrc='0.5*sin(300*t*t)':s=48000",
                              .output = "-movflags " + flags};
        WakeUp wakeUp;
        SoundReader whole(clip.file(), [&wakeUp] { wakeUp.notify(); });
        const Samples expected = samplesFrom(whole, wakeUp, 4 * second);
        SoundReader sought(clip.file(), [&wakeUp] { wakeUp.notify(); });
        for (double seconds : {0.5, 0.2, 0.9, 1.5, 2.6, 0.7}) {
            const std::int64_t first = std::llround(seconds * SoundPiece::rate);
            const Nanoseconds time = std::llround(seconds * second);
            sought.beginAt(time);
            const Samples found = samplesFrom(sought, wakeUp, time + second / 4);
            for (std::int64_t number = first; number < first + SoundPiece::rate / 5; ++number) {
                ASSERT_TRUE(expected.contains(number)) << number;
                ASSERT_TRUE(found.contains(number)) << flags << " at " << seconds << ": no sound";
                ASSERT_NEAR(found.at(number), expected.at(number), 2000) << flags << " at " << seconds;
            }
        }
    }
}

// A pipe: what was written into it and is not in it any more was read ahead.
TEST(SoundReader, ReadsAheadFarEnoughForASlowDisk)
{
    const MarkedClip clip{
        .name = "ahead.wav", .frames = 30, .sound = true, .output = "-map 1:a -t 4 -c:a pcm_s16le -ac 2"};
    std::ifstream stream(clip.file(), std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC), 0);
    std::size_t written = 0;
    const auto write = [&] {
        const ssize_t count = ::write(ends[1], content.data() + written, content.size() - written);
        written += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        return written;
    };
    {
        const std::filesystem::path pipe = "/proc/self/fd/" + std::to_string(ends[0]);
        SoundReader reader(pipe, [] {});
        constexpr std::size_t bytesPerSecond = 48000 * 4;
        constexpr std::size_t inPipe = 64U << 10;
        EXPECT_TRUE(eventually([&] { return write() > bytesPerSecond * 3 / 2 + inPipe; }));
        ::close(ends[1]);
        ::close(ends[0]);
    }
}

TEST(SoundReader, DeliversAllSoundOfATruncatedFile)
{
    const char* rows[] = {"", "-c:a pcm_s16le", "-c:a libmp3lame", "-c:a flac"};
    int number = 0;
    for (const char* codec : rows) {
        const std::string name = "sound-breaks-off-" + std::to_string(number++);
        const MarkedClip clip{
            .name = name + ".mkv", .frames = 120, .keyInterval = 250, .sound = true, .output = codec};
        const auto size = std::filesystem::file_size(clip.file());
        const auto file = truncatedCopy(clip.file(), name + "-truncated.mkv", size * 6 / 10);
        const Nanoseconds end = endOfSoundIn(file);
        EXPECT_GT(end, second) << codec;
        for (int again = 0; again < 10; ++again)
            EXPECT_EQ(endOfSoundIn(file), end) << codec;
    }
}

} // namespace stackreel
