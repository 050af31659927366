#pragma once

#include <QList>
#include <QPointF>
#include <QQuickWindow>
#include <QString>
#include <QUrl>

#include <functional>

class QQuickItem;

namespace tessary::testkit {

/// Works one window as a person would: with mouse, key and drop events at what is visible in it, found by
/// object name. Main thread only. What waits runs the event loop meanwhile; what fails says why on standard
/// error and returns false.
class WindowDriver
{
public:
    explicit WindowDriver(QQuickWindow& window) : m_window(window) {}

    /// The item of that name, when it is visible; null otherwise.
    [[nodiscard]] QQuickItem* find(const QString& name) const;

    /// Waits until the item is there and takes input, and lies still within the window.
    [[nodiscard]] bool ready(const QString& name) const;

    [[nodiscard]] bool click(const QString& name);

    /// Clicks the field, selects what it holds and types over it, key by key.
    [[nodiscard]] bool type(const QString& name, const QString& text);

    /// Drags the files over the item and lets them go there.
    [[nodiscard]] bool drop(const QString& name, const QList<QUrl>& files);

    /// The item's text; empty when it has none.
    [[nodiscard]] QString textOf(const QString& name) const;

    /// Waits for the item to hold that text, or to start with it.
    [[nodiscard]] bool shows(const QString& name, const QString& start) const;

    /// @param what for the report when it does not come about
    [[nodiscard]] static bool await(const QString& what, const std::function<bool()>& condition);

    /// Saves what the window shows as a PNG file, once it has come to rest or 0.8 s have passed.
    [[nodiscard]] bool savePicture(const QString& file) const;

private:
    [[nodiscard]] QPointF centreOf(const QQuickItem& item) const;

    QQuickWindow& m_window;
};

} // namespace tessary::testkit
