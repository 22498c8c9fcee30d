#include "cli/EncoderStatus.h"

#include <gtest/gtest.h>

#include <vector>

namespace stackreel
{

namespace
{

const std::string running = "frame=  115 fps= 44 q=24.0 size=    2816kB time=00:00:01.92 "
                            "bitrate=12015.1kbits/s speed=0.735x    ";
const EncoderStatus runningStatus = {.seconds = 1.92, .frames = 115, .speed = 0.735};

TEST(EncoderStatus, ParsesTimeFramesAndSpeed)
{
    EXPECT_EQ(EncoderStatus::parse(running), runningStatus);
}

TEST(EncoderStatus, ParsesTheLastLineOfARun)
{
    EXPECT_EQ(EncoderStatus::parse("frame=  120 fps= 44 q=-1.0 Lsize=    3203kB time=01:02:03.50 "
                                   "bitrate=13085.8kbits/s dup=148 drop=0 speed=1.2e+03x    "),
              (EncoderStatus{.seconds = 3723.5, .frames = 120, .speed = 1200}));
}

TEST(EncoderStatus, OmitsUnknownValues)
{
    EXPECT_EQ(EncoderStatus::parse("frame=    0 fps=0.0 q=0.0 size=       0kB time=-00:00:00.02 bitrate=N/A "
                                   "speed=   0x    "),
              (EncoderStatus{.seconds = 0, .frames = 0, .speed = std::nullopt}));
    EXPECT_EQ(EncoderStatus::parse("frame=1 time=00:00:01.00 bitrate=N/A speed=N/A"),
              (EncoderStatus{.seconds = 1, .frames = 1, .speed = std::nullopt}));
    EXPECT_EQ(EncoderStatus::parse("frame=x time=00:00:01.00"),
              (EncoderStatus{.seconds = 1, .frames = std::nullopt, .speed = std::nullopt}));
}

TEST(EncoderStatus, RejectsOtherLines)
{
    for (const char* line :
         {"", "frame=", "frame=1 time=", "frame=1 time=N/A speed=1x", "frame=1 time=1:2",
          "frame=1 time=::", "frame=1 time=00:00:nan", "frame=1 time=00:-1:00.00", "frame=1 time=00:00:1,5",
          "frame=1 mytime=00:00:01.00", "  creation_time   : 2020-01-01T00:00:00.000000Z",
          "    title: frame=1 time=00:00:09", "size=1 time=00:00:01.00",
          "frame=1 time=999999999999999999999:00:00"})
        EXPECT_FALSE(EncoderStatus::parse(line)) << line;
}

TEST(EncoderStatusReader, FindsTheLastCompleteStatusHoweverTheTextIsCut)
{
    const std::string text = "Input #0, mov, from 'a.mov':\n  Duration: 00:00:10.00\n"
                             "frame=    1 time=00:00:00.00 speed=   0x    \r" +
                             running + "\r" + "frame=  999 time=00:00:09.0";
    for (std::size_t size = 1; size <= text.size(); ++size) {
        EncoderStatusReader reader;
        for (std::size_t at = 0; at < text.size(); at += size)
            reader.feed(std::string_view(text).substr(at, size));
        EXPECT_EQ(reader.latest(), runningStatus) << size;
    }
}

TEST(EncoderStatusReader, FindsAStatusAfterAVeryLongLine)
{
    EncoderStatusReader reader;
    for (int i = 0; i < 1000; ++i)
        reader.feed(std::string(4096, 'x'));
    EXPECT_FALSE(reader.latest());
    reader.feed("\n" + running + "\n");
    EXPECT_EQ(reader.latest(), runningStatus);
}

TEST(EncoderStatusReader, HasNoStatusWithoutText)
{
    EncoderStatusReader reader;
    reader.feed("");
    EXPECT_FALSE(reader.latest());
}

} // namespace

} // namespace stackreel
