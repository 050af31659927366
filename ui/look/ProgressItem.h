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
    /// More of it, in words; may be empty.
    Q_PROPERTY(QString description READ description WRITE setDescription NOTIFY descriptionChanged)
    /// From 0 to 100.
    Q_PROPERTY(int percent READ percent WRITE setPercent NOTIFY percentChanged)

public:
    explicit ProgressItem(QQuickItem* parent = nullptr);

    [[nodiscard]] QString label() const { return m_label; }

    void setLabel(const QString& label);

    [[nodiscard]] QString description() const { return m_description; }

    void setDescription(const QString& description);

    [[nodiscard]] int percent() const { return m_percent; }

    /// What is out of range counts as the nearer end.
    void setPercent(int percent);

Q_SIGNALS:
    void labelChanged();
    void descriptionChanged();
    void percentChanged();

private:
    QString m_label;
    QString m_description;
    int m_percent = 0;
};

} // namespace tessary::look
