#pragma once

#include <QAbstractAnimation>
#include <QQmlParserStatus>
#include <QtQml/qqml.h>

namespace tessary::look {

/// A number that moves to each new goal frame by frame. The first goal is the first value.
class FollowingValue : public QAbstractAnimation, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ANONYMOUS
    Q_PROPERTY(qreal goal READ goal WRITE setGoal NOTIFY goalChanged)
    Q_PROPERTY(qreal value READ value NOTIFY valueChanged)
    /// False lets the value be at its goal at once.
    Q_PROPERTY(bool animated READ animated WRITE setAnimated)

public:
    using QAbstractAnimation::QAbstractAnimation;

    [[nodiscard]] qreal goal() const { return m_goal; }

    void setGoal(qreal goal);

    [[nodiscard]] virtual qreal value() const = 0;

    [[nodiscard]] bool animated() const { return m_animated; }

    void setAnimated(bool animated);

    void classBegin() override {}

    void componentComplete() override { m_complete = true; }

Q_SIGNALS:
    void goalChanged();
    void valueChanged();

protected:
    /// Notes where the way to the new goal begins; the animation is started then.
    virtual void setOff(qreal place) = 0;

    /// Puts the value at its goal, where nothing moves it any more.
    virtual void settle() = 0;

    void rest();

private:
    bool m_animated = true;
    qreal m_goal = 0;
    bool m_complete = false;
};

} // namespace tessary::look
