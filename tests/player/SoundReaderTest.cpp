#include "player/sound/SoundReader.h"

#include "player/base/WakeUp.h"
#include "tests/player/MarkedClip.h"

#include <gtest/gtest.h>

#include <filesystem>
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

} // namespace

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
