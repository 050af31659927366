#include "ui/look/Spring.h"

#include <cmath>
#include <numbers>

namespace tessary::look {

Spring::Spring(double response, double dampingFraction)
    : m_frequency(2 * std::numbers::pi / response), m_damping(dampingFraction)
{
}

Spring::Motion Spring::after(double seconds, Motion start) const
{
    const double rate = m_damping * m_frequency;
    const double decay = std::exp(-rate * seconds);
    const double push = start.velocity + rate * start.distance;
    if (m_damping >= 1) {
        const double place = start.distance + push * seconds;
        return {decay * place, decay * (push - rate * place)};
    }
    const double swing = m_frequency * std::sqrt(1 - m_damping * m_damping);
    const double cosine = std::cos(swing * seconds);
    const double sine = std::sin(swing * seconds);
    const double place = start.distance * cosine + push / swing * sine;
    return {decay * place, decay * (push * cosine - start.distance * swing * sine - rate * place)};
}

double Spring::reach(Motion motion) const
{
    return std::hypot(motion.distance, motion.velocity / m_frequency);
}

} // namespace tessary::look
