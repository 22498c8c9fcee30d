#include "player/source/BlockingReader.h"
#include "player/source/SampleTiming.h"
#include "tests/player/MarkedClip.h"

#include <gtest/gtest.h>

#include <cctype>
#include <ostream>
#include <string>

namespace stackreel
{

namespace
{

using Content = DecodePipeline::Content;

/// The file's beginning on the container's time line, as found by a separate pipeline.
Nanoseconds originOf(Content content, const SourceFile& file)
{
    BlockingReader source(file, content, {});
    const GstSamplePtr sample = source.next();
    EXPECT_TRUE(sample) << file.path();
    return sample ? sampleTime(sample.get()) - source.pipeline().timeOf(sample.get()) : -1;
}

struct Row {
    const char* name;
    const char* output;
    double delay;             ///< seconds from the start of the sound to that of the video
    Nanoseconds firstPicture; ///< time of the first frame, from the file's beginning
};

void PrintTo(const Row& row, std::ostream* out)
{
    *out << row.name;
}

class TimeOriginTest : public testing::TestWithParam<Row>
{
protected:
    const MarkedClip clip{.name = GetParam().name,
                          .frames = 120,
                          .keyInterval = 30,
                          .sound = true,
                          .delay = GetParam().delay,
                          .output = GetParam().output};
};

} // namespace

TEST_P(TimeOriginTest, IsTheSameForFramesPacketsAndSound)
{
    const Nanoseconds pictures = originOf(Content::pictures, clip.file());
    EXPECT_EQ(originOf(Content::packets, clip.file()), pictures);
    EXPECT_EQ(originOf(Content::sound, clip.file()), pictures);
}

TEST_P(TimeOriginTest, IsTheStartOfSoundThatPrecedesTheVideo)
{
    BlockingReader source(clip.file(), Content::pictures, {});
    const GstSamplePtr sample = source.next();
    ASSERT_TRUE(sample);
    EXPECT_NEAR(static_cast<double>(source.pipeline().timeOf(sample.get())),
                static_cast<double>(GetParam().firstPicture), 12.0 * millisecond);
}

TEST(SourceFile, GivesAllReadersTheSameOrigin)
{
    const MarkedClip clip{.name = "origin.ts", .frames = 120, .keyInterval = 30, .sound = true};
    const SourceFile file(clip.file());
    EXPECT_EQ(file.origin(), std::nullopt);
    const Nanoseconds seen = originOf(Content::pictures, file);
    EXPECT_EQ(file.origin(), seen);
    const SourceFile otherFile(clip.file());
    EXPECT_EQ(otherFile.settleOrigin(second / 2), second / 2);
    EXPECT_EQ(otherFile.settleOrigin(second), second / 2) << "the first value stays";
    for (const Content content : {Content::pictures, Content::packets, Content::sound})
        EXPECT_EQ(originOf(content, otherFile), second / 2);
}

// Encoders add silence at the start of the sound, and decoders remove part of it: 21 ms with AAC, 6.5 ms with
// Opus.
INSTANTIATE_TEST_SUITE_P(Files, TimeOriginTest,
                         testing::Values(Row{"origin.ts", "", 0, 23 * millisecond},
                                         Row{"origin-late-pictures.ts", "", 0.5, 523 * millisecond},
                                         Row{"origin-late-pictures.mkv", "-c:a libopus", 0.5,
                                             506 * millisecond}),
                         [](const auto& row) {
                             std::string name = row.param.name;
                             for (char& c : name)
                                 c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
                             return name;
                         });

} // namespace stackreel
