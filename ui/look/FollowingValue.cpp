#include "ui/look/FollowingValue.h"

namespace tessary::look {

void FollowingValue::setGoal(qreal goal)
{
    if (goal == m_goal) {
        return;
    }
    const qreal place = value();
    m_goal = goal;
    Q_EMIT goalChanged();
    if (!m_complete || !m_animated || duration() == 0) {
        rest();
        return;
    }
    stop();
    setOff(place);
    start();
}

void FollowingValue::setAnimated(bool animated)
{
    m_animated = animated;
    if (!m_animated) {
        rest();
    }
}

void FollowingValue::rest()
{
    settle();
    stop();
    Q_EMIT valueChanged();
}

} // namespace tessary::look
