#include "ui/look/EaseValue.h"

#include <QEasingCurve>
#include <QPointF>

#include <algorithm>

namespace tessary::look {
namespace {

QEasingCurve makeCurve()
{
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
    return curve;
}

} // namespace

void EaseValue::setGoal(qreal goal)
{
    if (goal == m_goal) {
        return;
    }
    stop();
    m_goal = goal;
    Q_EMIT goalChanged();
    if (!m_complete || !m_animated || duration() == 0) {
        moveTo(goal);
        return;
    }
    m_start = m_value;
    start();
}

void EaseValue::updateCurrentTime(int milliseconds)
{
    static const QEasingCurve curve = makeCurve();
    const qreal share = std::min(static_cast<qreal>(milliseconds) / duration(), qreal(1));
    moveTo(m_start + (m_goal - m_start) * curve.valueForProgress(share));
}

void EaseValue::moveTo(qreal value)
{
    m_value = value;
    Q_EMIT valueChanged();
}

} // namespace tessary::look
