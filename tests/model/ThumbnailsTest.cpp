#include "media/MediaPipeline.h"
#include "tests/model/FakeToolTest.h"
#include "tests/support/Awaited.h"
#include "tests/support/fakes/FakeStills.h"

#include <limits>
#include <thread>

namespace stackreel
{

namespace
{

class TimelineThumbnails : public FakeToolTest
{
protected:
    const std::filesystem::path source = "/clips/-Beach 'day' 東京 100%.MOV";
    const std::shared_ptr<FakeStills> m_stills = std::make_shared<FakeStills>();

    std::vector<VideoFrame> thumbnails(double duration, int count, std::stop_token stop = {})
    {
        return runToEnd(
            MediaPipeline::timelineThumbnails(source, duration, count, m_stills, std::move(stop)));
    }
    std::vector<double> requestedTimes() const
    {
        std::vector<double> seconds;
        for (const MediaTime time : m_stills->requests.back().times)
            seconds.push_back(time.seconds());
        return seconds;
    }
    static std::vector<int> numbers(const std::vector<VideoFrame>& frames)
    {
        std::vector<int> numbers;
        for (const VideoFrame& frame : frames)
            numbers.push_back(FakeStills::number(frame));
        return numbers;
    }
};

} // namespace

TEST_F(TimelineThumbnails, AreFromTheMiddlesOfEqualSlices)
{
    struct Row {
        double duration;
        int count;
        std::vector<double> times;
    };
    const Row rows[] = {{10, 4, {1.25, 3.75, 6.25, 8.75}},
                        {10, 1, {5}},
                        {0.01, 2, {2.0 / 600, 5.0 / 600}},
                        {1e-9, 3, {0, 0, 0}},
                        {7200, 2, {1800, 5400}}};
    for (const Row& row : rows) {
        EXPECT_EQ(thumbnails(row.duration, row.count).size(), row.times.size());
        EXPECT_EQ(requestedTimes(), row.times);
        EXPECT_EQ(m_stills->requests.back().file, source);
        EXPECT_NE(m_stills->usedOn, std::this_thread::get_id());
    }
    EXPECT_EQ(m_stills->requests.size(), std::size(rows)) << "one request for all times";
}

TEST_F(TimelineThumbnails, ComputeTheQuotientBeforeTheProduct)
{
    // If the duration were multiplied before it is divided, the 1st and the 7th time would be 2/600 and
    // 20/600.
    thumbnails(0.06, 12);
    EXPECT_EQ(m_stills->requests.back().times.at(0), MediaTime::fromUnits(1));
    EXPECT_EQ(m_stills->requests.back().times.at(6), MediaTime::fromUnits(19));
}

TEST_F(TimelineThumbnails, AreRequestedWithSizeAndTolerance)
{
    thumbnails(10, 4);
    const StillRequest& request = m_stills->requests.back();
    EXPECT_EQ(request.maximumWidth, 320);
    EXPECT_EQ(request.maximumHeight, 180);
    EXPECT_EQ(request.tolerance, MediaTime::fromUnits(300));
}

TEST_F(TimelineThumbnails, AreNoneWithoutADurationOrACount)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const std::pair<double, int> rows[] = {
        {10, 0},       {10, -1},       {10, std::numeric_limits<int>::min()},
        {0, 4},        {-0.0, 4},      {-3, 4},
        {infinity, 4}, {-infinity, 4}, {std::numeric_limits<double>::quiet_NaN(), 4}};
    for (const auto& [duration, count] : rows) {
        Awaited<std::vector<VideoFrame>> images(
            MediaPipeline::timelineThumbnails(source, duration, count, m_stills));
        EXPECT_TRUE(images.hasEnded()) << "at once";
        EXPECT_TRUE(images.result().empty());
    }
    EXPECT_TRUE(m_stills->requests.empty());
}

TEST_F(TimelineThumbnails, OmitFailedImages)
{
    m_stills->answers = [](const std::vector<MediaTime>& times) {
        auto images = FakeStills::onePictureEach(times);
        images.at(1) = FakeStills::failure(times.at(1));
        return images;
    };
    EXPECT_EQ(numbers(thumbnails(10, 4)), (std::vector<int>{0, 2, 3}));
    m_stills->answers = [](const std::vector<MediaTime>& times) {
        return std::vector<Still>(times.size(), FakeStills::failure(times.front()));
    };
    EXPECT_TRUE(thumbnails(10, 4).empty());
}

TEST_F(TimelineThumbnails, AreSortedByTheirTimes)
{
    m_stills->answers = [](const std::vector<MediaTime>& times) {
        return std::vector<Still>{FakeStills::picture(times.at(3), 3), FakeStills::picture(times.at(0), 0),
                                  FakeStills::picture(times.at(2), 2), FakeStills::picture(times.at(1), 1)};
    };
    EXPECT_EQ(numbers(thumbnails(10, 4)), (std::vector<int>{0, 1, 2, 3}));
}

TEST_F(TimelineThumbnails, AreSortedByRequestedTimesNotByFrameTimes)
{
    // Because of the tolerance, a later request may get an earlier frame.
    m_stills->answers = [](const std::vector<MediaTime>& times) {
        auto images = FakeStills::onePictureEach(times);
        std::swap(images.at(1).frame.seconds, images.at(2).frame.seconds);
        return images;
    };
    EXPECT_EQ(numbers(thumbnails(10, 4)), (std::vector<int>{0, 1, 2, 3}));
}

TEST_F(TimelineThumbnails, KeepTheirOrderOfArrivalAtEqualTimes)
{
    // The clip is so short that all its slices have the same time.
    const std::vector<int> arrival = {5, 3, 11, 0, 7, 2, 9, 1, 10, 4, 8, 6, 12, 19, 14, 13, 17, 16, 15, 18};
    m_stills->answers = [&](const std::vector<MediaTime>& times) {
        std::vector<Still> images;
        for (const int number : arrival)
            images.push_back(FakeStills::picture(times.at(static_cast<std::size_t>(number)), number));
        return images;
    };
    EXPECT_EQ(numbers(thumbnails(1e-6, 20)), arrival);
}

TEST_F(TimelineThumbnails, EndEarlyWhenCancelled)
{
    std::stop_source stop;
    m_stills->answers = [&](const std::vector<MediaTime>& times) {
        stop.request_stop();
        return FakeStills::onePictureEach(times);
    };
    EXPECT_TRUE(thumbnails(10, 4, stop.get_token()).empty());
}

TEST_F(TimelineThumbnails, NeverThrow)
{
    m_stills->answers = [](const std::vector<MediaTime>&) -> std::vector<Still> { throw std::bad_alloc(); };
    EXPECT_TRUE(thumbnails(10, 4).empty());
}

} // namespace stackreel
