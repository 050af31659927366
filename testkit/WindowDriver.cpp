#include "testkit/WindowDriver.h"

#include <QDropEvent>
#include <QElapsedTimer>
#include <QImage>
#include <QMimeData>
#include <QQuickItem>
#include <QTest>

namespace tessary::testkit {
namespace {

constexpr int patienceMilliseconds = 60'000;

/// A few frames: what starts to move in one of them is not taken for something that lies still.
constexpr int stillMilliseconds = 60;

QQuickItem* findBelow(QQuickItem* item, const QString& name)
{
    if (!item->isVisible()) {
        return nullptr;
    }
    if (item->objectName() == name) {
        return item;
    }
    for (QQuickItem* child : item->childItems()) {
        if (QQuickItem* found = findBelow(child, name)) {
            return found;
        }
    }
    return nullptr;
}

/// Scrolls the areas around the item until it shows.
void bringIntoView(QQuickItem& item)
{
    for (QQuickItem* area = item.parentItem(); area != nullptr; area = area->parentItem()) {
        const QVariant contentY = area->property("contentY");
        auto* content = area->property("contentItem").value<QQuickItem*>();
        if (!contentY.isValid() || content == nullptr) {
            continue;
        }
        const QRectF place = item.mapRectToItem(content, item.boundingRect());
        if (place.top() < contentY.toDouble()) {
            area->setProperty("contentY", place.top());
        } else if (place.bottom() > contentY.toDouble() + area->height()) {
            area->setProperty("contentY", place.bottom() - area->height());
        }
    }
}

} // namespace

QQuickItem* WindowDriver::find(const QString& name) const
{
    return findBelow(m_window.contentItem(), name);
}

QPointF WindowDriver::centreOf(const QQuickItem& item) const
{
    return item.mapToScene(item.boundingRect().center());
}

bool WindowDriver::ready(const QString& name) const
{
    QPointF last;
    QElapsedTimer still;
    int frames = 0; // since it moved: what was made just now may not be laid out for a while
    const auto counting =
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, &m_window, [&] { ++frames; });
    const bool came = await(QStringLiteral("\"%1\" to take input").arg(name), [&] {
        QQuickItem* item = find(name);
        if (item == nullptr || !item->isEnabled() || find(QStringLiteral("pressGuard")) != nullptr) {
            return false;
        }
        bringIntoView(*item);
        const QPointF centre = centreOf(*item);
        if (centre != std::exchange(last, centre) || !still.isValid()) {
            still.start();
            frames = 0;
        }
        m_window.update();
        return still.hasExpired(stillMilliseconds) && frames > 1 &&
               QRectF(QPointF(), m_window.size()).contains(centre);
    });
    QObject::disconnect(counting);
    return came;
}

bool WindowDriver::click(const QString& name)
{
    if (!ready(name)) {
        return false;
    }
    const QPoint place = centreOf(*find(name)).toPoint();
    QTest::mouseMove(&m_window, place);
    QTest::mouseClick(&m_window, Qt::LeftButton, Qt::NoModifier, place);
    return true;
}

bool WindowDriver::type(const QString& name, const QString& text)
{
    if (!click(name)) {
        return false;
    }
    QTest::keyClick(&m_window, Qt::Key_A, Qt::ControlModifier);
    for (const QChar character : text) {
        QTest::sendKeyEvent(QTest::Click, &m_window, Qt::Key_unknown, QString(character), Qt::NoModifier);
    }
    return shows(name, text);
}

bool WindowDriver::drop(const QString& name, const QList<QUrl>& files)
{
    if (!ready(name)) {
        return false;
    }
    const QPointF place = centreOf(*find(name));
    QMimeData data;
    data.setUrls(files);
    QDragEnterEvent enter(place.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &enter);
    QDragMoveEvent move(place.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &move);
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &drop);
    if (!drop.isAccepted()) {
        qWarning("\"%s\" did not take the drop", qUtf8Printable(name));
    }
    return drop.isAccepted();
}

QString WindowDriver::textOf(const QString& name) const
{
    const QQuickItem* item = find(name);
    return item == nullptr ? QString() : item->property("text").toString();
}

bool WindowDriver::shows(const QString& name, const QString& start) const
{
    const bool shown = await(QStringLiteral("\"%1\" to show \"%2\"").arg(name, start),
                             [&] { return textOf(name).startsWith(start); });
    if (!shown) {
        qWarning("It shows \"%s\"", qUtf8Printable(textOf(name)));
    }
    return shown;
}

bool WindowDriver::await(const QString& what, const std::function<bool()>& condition)
{
    const bool came = QTest::qWaitFor(condition, patienceMilliseconds);
    if (!came) {
        qWarning("Waited in vain for %s", qUtf8Printable(what));
    }
    return came;
}

bool WindowDriver::savePicture(const QString& file) const
{
    // Movements come to their end first, where they have one.
    QImage picture = m_window.grabWindow();
    for (int pause = 0; pause < 8; ++pause) {
        QTest::qWait(100);
        const QImage before = std::exchange(picture, m_window.grabWindow());
        if (before == picture) {
            break;
        }
    }
    const bool saved = picture.save(file);
    if (!saved) {
        qWarning("Could not save the picture %s", qUtf8Printable(file));
    }
    return saved;
}

} // namespace tessary::testkit
