#include "ui/SpringValue.h"

#include <cmath>

namespace stackreel
{

namespace
{

// Far below what can be seen of a scale factor, and slow enough not to leave this distance again.
constexpr double settledDistance = 0.0005;
constexpr double settledVelocity = 0.02;

} // namespace

void SpringValue::setTarget(double target)
{
    if (m_hasTarget && target == m_target)
        return;
    const bool wasSettled = settled();
    m_target = target;
    Q_EMIT targetChanged();
    if (!m_animated || !m_hasTarget)
        setState({.value = target});
    m_hasTarget = true;
    if (settled() != wasSettled)
        Q_EMIT settledChanged();
}

void SpringValue::advance(double seconds)
{
    if (settled())
        return;
    const SpringState next = m_motion.after(m_state, m_target, seconds);
    const bool rests =
        std::abs(next.value - m_target) < settledDistance && std::abs(next.velocity) < settledVelocity;
    setState(rests ? SpringState{.value = m_target} : next);
    if (rests)
        Q_EMIT settledChanged();
}

void SpringValue::setState(const SpringState& state)
{
    m_state = state;
    Q_EMIT valueChanged();
}

} // namespace stackreel
