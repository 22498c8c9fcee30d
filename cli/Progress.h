#pragma once

#include "cli/EncoderStatus.h"

#include <cstddef>
#include <optional>
#include <string>

namespace stackreel
{

/// The progress of an export, as shown to the user.
struct Progress {
    int percent = 0;                   ///< of the exported length, 0 to 100
    std::optional<double> speed;       ///< seconds of video encoded per second
    std::optional<double> secondsLeft; ///< estimated; above 0

    /// The progress as a line of text: "42 %, 1.31x, 0:12 left".
    std::string line() const;
    /// A progress bar followed by the details, exactly `columns` wide. If that is too narrow for a bar, it is
    /// the text of `line`, cut to `columns`. ASCII.
    std::string bar(std::size_t columns) const;

    bool operator==(const Progress&) const = default;
};

/// Computes the progress from the encoder's statuses. The percentage never decreases.
class ProgressEstimate
{
public:
    /// `lengthSeconds` is the length of the finished export.
    explicit ProgressEstimate(double lengthSeconds) : m_length(lengthSeconds) {}

    const Progress& current() const { return m_current; }
    const Progress& update(const EncoderStatus& status);

private:
    double m_length;
    Progress m_current;
};

} // namespace stackreel
