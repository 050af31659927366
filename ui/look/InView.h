#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQml/qqml.h>

namespace tessary::look {

/// Attached to an item: whether it can be seen, and that it takes no trouble over what cannot.
class InView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    QML_ATTACHED(tessary::look::InView) // in full: the linter of the screens knows it by that name
    /// The item's window is on the screen: it is open, and neither minimised nor covered as far as the
    /// desktop tells.
    Q_PROPERTY(bool exposed READ exposed NOTIFY exposedChanged)

public:
    /// The item is not owned, and owns this.
    explicit InView(QQuickItem* item);

    static InView* qmlAttachedProperties(QObject* item);

    [[nodiscard]] bool exposed() const { return m_exposed; }

    /// From now on a text makes nothing of the lines that are scrolled out of view. The toolkit does so by
    /// itself above 10000 characters, and decides it anew whenever the whole text is set.
    Q_INVOKABLE void cull();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void exposedChanged();

private:
    void follow(QQuickWindow* window);
    void look();

    QQuickItem* m_item;
    QPointer<QQuickWindow> m_window;
    bool m_exposed{};
};

} // namespace tessary::look
