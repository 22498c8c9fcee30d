#include "tests/player/FrameReading.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace stackreel
{

namespace
{

/// A way to split a clip into fragments, each with its own header.
struct Row {
    std::string name;
    std::string flags;
    bool sound;
    int last = 199; ///< number of the last frame that the demuxer delivers
};

void PrintTo(const Row& row, std::ostream* out)
{
    *out << row.name;
}

class FragmentedClip : public testing::TestWithParam<Row>
{
protected:
    const MarkedClip clip{.name = "fragmented-" + GetParam().name + ".mp4",
                          .frames = 200,
                          .keyInterval = 30,
                          .sound = GetParam().sound,
                          .output = "-movflags " + GetParam().flags};
    /// The time of the first frame. With sound, the time line begins with the sound.
    double beginning() const
    {
        Reading reading(clip.file());
        reading.reader.showFrom(0);
        EXPECT_EQ(reading.next(), 0);
        return toSeconds(reading.frame->time);
    }
};

} // namespace

TEST_P(FragmentedClip, showsTheFrameThatIsUnderATimeHoweverItGotThere)
{
    const double first = beginning();
    Reading reading(clip.file());
    for (int number : {1, 0, 15, 29, 30, 31, 45, 60, 100, 119, 120, 150, GetParam().last, 61, 59, 2}) {
        for (double within : {0.1, 0.5, 0.9}) {
            reading.reader.showFrom(fromSeconds(first + (number + within) / 30));
            EXPECT_EQ(reading.next(), number) << within;
            const int following = number < GetParam().last ? number + 1 : -1;
            EXPECT_EQ(reading.next(), following) << within << " after " << number;
        }
    }
}

TEST_P(FragmentedClip, isReadToItsEndFromAnywhere)
{
    const double first = beginning();
    Reading reading(clip.file());
    for (int number : {10, 40, 90}) {
        reading.reader.continueAfter(fromSeconds(first + number / 30.0));
        const std::vector<int> numbers = reading.all();
        ASSERT_EQ(numbers.size(), static_cast<std::size_t>(GetParam().last - number));
        EXPECT_EQ(numbers.front(), number + 1);
        EXPECT_EQ(numbers.back(), GetParam().last);
    }
}

// When the file's own header lists the first samples, the demuxer drops the last two frames, even when it
// reads from the beginning.
INSTANTIATE_TEST_SUITE_P(Files, FragmentedClip,
                         testing::Values(Row{"plain", "frag_keyframe", false, 197},
                                         Row{"sound", "frag_keyframe", true, 197},
                                         Row{"empty_moov", "frag_keyframe+empty_moov", false},
                                         Row{"empty_moov_sound", "frag_keyframe+empty_moov", true},
                                         Row{"cmaf", "cmaf+frag_keyframe", true},
                                         Row{"dash", "dash+frag_keyframe+global_sidx", false}),
                         [](const auto& row) { return row.param.name; });

} // namespace stackreel
