#pragma once

#include "ui/look/Spring.h"

#include <QAbstractAnimation>
#include <QQmlParserStatus>
#include <QtQml/qqml.h>

namespace tessary::look {

/// A number that follows its goal on a spring, frame by frame. A goal that changes on the way is taken up
/// from the place and with the speed of that moment. The first goal is the first value.
class SpringValue : public QAbstractAnimation, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(qreal goal READ goal WRITE setGoal NOTIFY goalChanged)
    Q_PROPERTY(qreal value READ value NOTIFY valueChanged)
    /// False lets the value be at its goal at once.
    Q_PROPERTY(bool animated READ animated WRITE setAnimated)
    Q_PROPERTY(qreal response MEMBER m_response)
    Q_PROPERTY(qreal dampingFraction MEMBER m_dampingFraction)

public:
    using QAbstractAnimation::QAbstractAnimation;

    [[nodiscard]] qreal goal() const { return m_goal; }

    void setGoal(qreal goal);

    [[nodiscard]] bool animated() const { return m_animated; }

    void setAnimated(bool animated);

    [[nodiscard]] qreal value() const { return m_goal + m_motion.distance; }

    [[nodiscard]] int duration() const override { return -1; } // until it rests

    void classBegin() override {}

    void componentComplete() override { m_complete = true; }

Q_SIGNALS:
    void goalChanged();
    void valueChanged();

protected:
    void updateCurrentTime(int milliseconds) override;

private:
    void rest();

    bool m_animated = true;
    qreal m_goal = 0;
    qreal m_response = 0.3;
    qreal m_dampingFraction = 0.825;
    Spring::Motion m_start{};
    Spring::Motion m_motion{};
    bool m_complete = false;
};

} // namespace tessary::look
