#pragma once

#include "player/base/WakeUp.h"
#include "player/pictures/FrameReader.h"
#include "player/pictures/RgbConverter.h"
#include "tests/player/MarkedClip.h"

#include <cmath>
#include <filesystem>
#include <vector>

namespace stackreel
{

inline Nanoseconds fromSeconds(double seconds)
{
    return std::llround(seconds * second);
}

/// Reads frames with a `FrameReader` alone, without a player.
class Reading
{
public:
    explicit Reading(const std::filesystem::path& file)
        : reader(file, {320, 180}, [this] { m_wakeUp.notify(); })
    {
    }

    /// The next frame's number; negative at the end.
    int next()
    {
        while (true) {
            switch (reader.step(frame)) {
            case FrameReader::Step::frame:
                return numberIn(m_converter.convert(*frame));
            case FrameReader::Step::end:
                return -1;
            case FrameReader::Step::failed:
                return -2;
            case FrameReader::Step::working:
                break;
            default:
                m_wakeUp.wait(reader.deadline());
            }
        }
    }

    std::vector<int> all()
    {
        std::vector<int> numbers;
        for (int number = next(); number >= 0; number = next())
            numbers.push_back(number);
        return numbers;
    }

    PlanarFramePtr frame;

private:
    WakeUp m_wakeUp;
    RgbConverter m_converter;

public:
    FrameReader reader; // declared last, because its threads use the members above
};

} // namespace stackreel
