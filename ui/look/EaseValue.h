#pragma once

#include <QAbstractAnimation>
#include <QQmlParserStatus>
#include <QtQml/qqml.h>

namespace tessary::look {

/// A number that eases in and out from where it is to each new goal, frame by frame. The first goal is the
/// first value. For what there is many of: an animation of the toolkit's, with its curve, takes far longer to
/// make.
class EaseValue : public QAbstractAnimation, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(qreal goal READ goal WRITE setGoal NOTIFY goalChanged)
    Q_PROPERTY(qreal value READ value NOTIFY valueChanged)
    /// False lets the value be at its goal at once.
    Q_PROPERTY(bool animated MEMBER m_animated)
    Q_PROPERTY(qreal seconds MEMBER m_seconds)

public:
    using QAbstractAnimation::QAbstractAnimation;

    [[nodiscard]] qreal goal() const { return m_goal; }

    void setGoal(qreal goal);

    [[nodiscard]] qreal value() const { return m_value; }

    [[nodiscard]] int duration() const override { return qRound(m_seconds * 1000); }

    void classBegin() override {}

    void componentComplete() override { m_complete = true; }

Q_SIGNALS:
    void goalChanged();
    void valueChanged();

protected:
    void updateCurrentTime(int milliseconds) override;

private:
    void moveTo(qreal value);

    bool m_animated = true;
    qreal m_seconds = 0.35;
    qreal m_start = 0;
    qreal m_goal = 0;
    qreal m_value = 0;
    bool m_complete = false;
};

} // namespace tessary::look
