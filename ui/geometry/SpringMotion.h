#pragma once

namespace stackreel
{

/// The state of a damped spring that moves a value to a target.
struct SpringState {
    double value = 0;
    double velocity = 0; ///< per second

    bool operator==(const SpringState&) const = default;
};

/// A damped harmonic oscillator of unit mass. `response` is its undamped period in seconds, positive;
/// `damping` is its damping ratio, at least 0 and less than 1, so the value overshoots.
struct SpringMotion {
    double response = 0.18;
    double damping = 0.66;

    /// The exact state after some seconds (the solution of the oscillator's differential equation). The frame
    /// rate does not change the motion.
    SpringState after(const SpringState& start, double target, double seconds) const;
};

} // namespace stackreel
