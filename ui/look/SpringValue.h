#pragma once

#include "ui/look/FollowingValue.h"
#include "ui/look/Spring.h"

namespace tessary::look {

/// A number that follows its goal on a spring. A goal that changes on the way is taken up from the place and
/// with the speed of that moment.
class SpringValue
    : public tessary::look::FollowingValue // in full: the linter of the screens knows it by that name
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal response MEMBER m_response)
    Q_PROPERTY(qreal dampingFraction MEMBER m_dampingFraction)

public:
    using FollowingValue::FollowingValue;

    [[nodiscard]] qreal value() const override { return goal() + m_motion.distance; }

    [[nodiscard]] int duration() const override { return -1; } // until it rests

protected:
    void setOff(qreal place) override;

    void settle() override { m_motion = {}; }

    void updateCurrentTime(int milliseconds) override;

private:
    qreal m_response = 0.3;
    qreal m_dampingFraction = 0.825;
    Spring::Motion m_start{};
    Spring::Motion m_motion{};
};

} // namespace tessary::look
