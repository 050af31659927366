#pragma once

#include "ui/look/FollowingValue.h"

namespace tessary::look {

/// A number that eases in and out from where it is to each new goal. For what there is many of: an animation
/// of the toolkit's, with its curve, takes far longer to make.
class EaseValue
    : public tessary::look::FollowingValue // in full: the linter of the screens knows it by that name
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal seconds MEMBER m_seconds)

public:
    using FollowingValue::FollowingValue;

    [[nodiscard]] qreal value() const override { return m_value; }

    [[nodiscard]] int duration() const override { return qRound(m_seconds * 1000); }

protected:
    void setOff(qreal place) override { m_start = place; }

    void settle() override { m_value = goal(); }

    void updateCurrentTime(int milliseconds) override;

private:
    qreal m_seconds = 0.35;
    qreal m_start{};
    qreal m_value = 0;
};

} // namespace tessary::look
