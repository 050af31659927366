#include "desktop/CaretRest.h"

#include <QEvent>
#include <QGuiApplication>
#include <QStyleHints>

#include <chrono>

namespace tessary::desktop {
namespace {

constexpr std::chrono::seconds untouched{10};

} // namespace

CaretRest::CaretRest() : m_flashTime(QGuiApplication::styleHints()->cursorFlashTime())
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(untouched);
    connect(&m_timer, &QTimer::timeout, [] { QGuiApplication::styleHints()->setCursorFlashTime(0); });
    m_timer.start();
    qApp->installEventFilter(this);
}

CaretRest::~CaretRest()
{
    QGuiApplication::styleHints()->setCursorFlashTime(m_flashTime);
}

bool CaretRest::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress) {
        QGuiApplication::styleHints()->setCursorFlashTime(m_flashTime);
        m_timer.start();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tessary::desktop
