#include "ui/look/InView.h"

#include <QEvent>

#include <utility>

namespace tessary::look {

InView::InView(QQuickItem* item) : QObject(item), m_item(item)
{
    connect(item, &QQuickItem::windowChanged, this, &InView::follow);
    follow(item->window());
}

InView* InView::qmlAttachedProperties(QObject* item)
{
    auto* seen = qobject_cast<QQuickItem*>(item);
    return seen != nullptr ? new InView(seen) : nullptr;
}

void InView::cull()
{
    m_item->setFlag(QQuickItem::ItemObservesViewport);
}

void InView::follow(QQuickWindow* window)
{
    m_window = window;
    if (window != nullptr) {
        window->installEventFilter(this);
    }
    look();
}

void InView::look()
{
    const bool exposed = m_window != nullptr && m_window->isExposed();
    if (std::exchange(m_exposed, exposed) != exposed) {
        Q_EMIT exposedChanged();
    }
}

bool InView::eventFilter(QObject* /*watched*/, QEvent* event)
{
    if (event->type() == QEvent::Expose) { // also when it is no longer exposed
        look();
    }
    return false;
}

} // namespace tessary::look
