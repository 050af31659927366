#pragma once

#include <QQuickItem>
#include <QString>

namespace tessary::look {

/// How far something has come, as screen readers are told it: by a name and a whole number of percent. What
/// it looks like is up to its children. The toolkit's own items have a value for screen readers only where
/// people can set it.
///
/// To be found by them it needs an Accessible.role, too.
class ProgressItem : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString label READ label WRITE setLabel NOTIFY labelChanged)
    /// From 0 to 100.
    Q_PROPERTY(int percent READ percent WRITE setPercent NOTIFY percentChanged)

public:
    explicit ProgressItem(QQuickItem* parent = nullptr);

    [[nodiscard]] QString label() const { return m_label; }

    void setLabel(const QString& label);

    [[nodiscard]] int percent() const { return m_percent; }

    /// What is out of range counts as the nearer end.
    void setPercent(int percent);

Q_SIGNALS:
    void labelChanged();
    void percentChanged();

private:
    QString m_label;
    int m_percent = 0;
};

} // namespace tessary::look
