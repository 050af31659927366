#include "ui/look/EaseValue.h"

#include <QEasingCurve>
#include <QPointF>

namespace tessary::look {
namespace {

QEasingCurve makeCurve()
{
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
    return curve;
}

} // namespace

void EaseValue::updateCurrentTime(int milliseconds)
{
    static const QEasingCurve curve = makeCurve();
    const qreal share = static_cast<qreal>(milliseconds) / duration();
    m_value = m_start + (goal() - m_start) * curve.valueForProgress(share);
    Q_EMIT valueChanged();
}

} // namespace tessary::look
