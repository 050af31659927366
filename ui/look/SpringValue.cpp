#include "ui/look/SpringValue.h"

namespace tessary::look {
namespace {

constexpr double atRest = 0.0005; // of the unit that springs move over here

} // namespace

void SpringValue::setGoal(qreal goal)
{
    if (goal == m_goal) {
        return;
    }
    const qreal place = value();
    m_goal = goal;
    Q_EMIT goalChanged();
    if (!m_complete || !m_animated) {
        rest();
        return;
    }
    stop();
    m_motion.distance = place - goal;
    m_start = m_motion;
    start();
}

void SpringValue::setAnimated(bool animated)
{
    m_animated = animated;
    if (!m_animated) {
        rest();
    }
}

void SpringValue::rest()
{
    m_motion = {};
    stop();
    Q_EMIT valueChanged();
}

void SpringValue::updateCurrentTime(int milliseconds)
{
    const Spring spring(m_response, m_dampingFraction);
    m_motion = spring.after(milliseconds / 1000.0, m_start);
    if (spring.reach(m_motion) < atRest) {
        rest();
    } else {
        Q_EMIT valueChanged();
    }
}

} // namespace tessary::look
