#include "ui/look/SpringValue.h"

namespace tessary::look {
namespace {

constexpr double atRest = 0.0005; // of the unit that springs move over here

} // namespace

void SpringValue::setOff(qreal place)
{
    m_motion.distance = place - goal();
    m_start = m_motion;
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
