#include "ui/geometry/SpringMotion.h"

#include <cmath>
#include <numbers>

namespace stackreel
{

SpringState SpringMotion::after(const SpringState& start, double target, double seconds) const
{
    const double undamped = 2 * std::numbers::pi / response; // radians per second
    const double decay = damping * undamped;
    const double damped = undamped * std::sqrt(1 - damping * damping);
    const double distance = start.value - target;
    const double envelope = std::exp(-decay * seconds);
    const double cosine = std::cos(damped * seconds);
    const double sine = std::sin(damped * seconds) / damped;
    return {.value = target + envelope * (distance * cosine + (start.velocity + decay * distance) * sine),
            .velocity = envelope * (start.velocity * cosine -
                                    (decay * start.velocity + undamped * undamped * distance) * sine)};
}

} // namespace stackreel
