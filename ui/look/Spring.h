#pragma once

namespace tessary::look {

/// A damped spring that comes to rest at 0. Its response is the period that it would have undamped, in
/// seconds; its damping fraction, above 0 and up to 1, is the share of the damping that lets it not
/// overshoot.
class Spring
{
public:
    struct Motion
    {
        double distance; ///< from where it will rest
        double velocity; ///< per second
    };

    Spring(double response, double dampingFraction);

    /// Where the spring is, so long after it was let go.
    [[nodiscard]] Motion after(double seconds, Motion start) const;

    /// What is left of the motion, in units of distance: no later swing reaches further.
    [[nodiscard]] double reach(Motion motion) const;

private:
    double m_frequency; ///< undamped, in radians per second
    double m_damping;
};

} // namespace tessary::look
