#pragma once

#include <QObject>
#include <QTimer>

namespace tessary::desktop {

/// Lets the text cursor stand still when nobody has touched the program for 10 s, as desktops do: a cursor
/// that blinks through the night draws two frames a second. Any key or click lets it blink again. Lives below
/// a QGuiApplication.
class CaretRest : public QObject
{
    Q_OBJECT

public:
    CaretRest();
    ~CaretRest() override;
    Q_DISABLE_COPY_MOVE(CaretRest)

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int m_flashTime;      ///< the desktop's
    QTimer m_timer{this}; ///< until it rests
};

} // namespace tessary::desktop
