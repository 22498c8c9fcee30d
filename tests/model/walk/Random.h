#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace stackreel
{

/// Numbers that depend on the seed only, on every system.
class Random
{
public:
    explicit Random(std::uint64_t seed) : m_engine(seed) {}

    /// A number in [0, count).
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(m_engine() % count); }
    bool chance(std::size_t percent) { return below(100) < percent; }
    /// A number in [low, high), in 10,000 steps.
    double between(double low, double high)
    {
        return low + (high - low) * static_cast<double>(below(10000)) / 10000;
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace stackreel
