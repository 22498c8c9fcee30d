#pragma once

#include "player/loop/LoopFeeder.h"
#include "tests/player/FrameReading.h"

#include <cstddef>
#include <filesystem>
#include <optional>

namespace stackreel
{

inline constexpr std::size_t largeBudget = 64U << 20;

inline LoopRange rangeOf(double start, double end)
{
    return {fromSeconds(start), fromSeconds(end)};
}

/// Takes frames from a `LoopFeeder` alone, without a player.
class Feeding
{
public:
    Feeding(const std::filesystem::path& file, LoopRange range, std::size_t budget)
        : reader(file, {320, 180}, [this] { m_wakeUp.notify(); }), feeder(reader, range, budget)
    {
    }

    /// The next frame; none when nothing can be shown.
    std::optional<QueuedFrame> next() { return next(feeder); }
    /// The next frame of another feeder of the same reader.
    std::optional<QueuedFrame> next(LoopFeeder& source)
    {
        QueuedFrame frame;
        while (true) {
            switch (source.step(frame)) {
            case LoopFeeder::Step::frame:
                return frame;
            case LoopFeeder::Step::failed:
                return std::nullopt;
            case LoopFeeder::Step::working:
                break;
            default:
                if (source.parked())
                    return std::nullopt;
                m_wakeUp.wait(source.deadline());
            }
        }
    }

    int numberOf(const QueuedFrame& queued) { return numberIn(m_converter.convert(*queued.frame)); }

private:
    WakeUp m_wakeUp;
    RgbConverter m_converter;

public:
    FrameReader reader; // declared last, because its threads use the members above
    LoopFeeder feeder;
};

} // namespace stackreel
