#pragma once

#include "player/base/MediaTime.h"

#include <string>
#include <utility>
#include <vector>

namespace stackreel
{

/// Records the calls to the fakes of one test in order, one line of text each. Not thread-safe.
class Journal
{
public:
    using Lines = std::vector<std::string>;

    void note(std::string line) { m_lines.push_back(std::move(line)); }
    /// The lines since the last call.
    Lines take() { return std::exchange(m_lines, {}); }

private:
    Lines m_lines;
};

/// The shortest text that is parsed to the same number: "0.25", "20".
std::string described(double value);
/// "150/600", or "no time".
std::string described(MediaTime time);

} // namespace stackreel
