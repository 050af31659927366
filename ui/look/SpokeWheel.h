#pragma once

#include "ui/look/VisiblePainter.h"

#include <QColor>
#include <QtQml/qqml.h>

namespace tessary::look {

/// Spokes in a circle, from a bright one at `step` to ever fainter ones behind it.
class SpokeWheel
    : public tessary::look::VisiblePainter // in full: the linter of the screens knows it by that name
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor tint MEMBER m_tint NOTIFY lookChanged)
    Q_PROPERTY(int step MEMBER m_step NOTIFY lookChanged)
    Q_PROPERTY(int spokes READ spokes CONSTANT)

public:
    using VisiblePainter::VisiblePainter;

    [[nodiscard]] static int spokes() { return spokeCount; }

    /// Paints all steps, side by side: one picture is enough for as long as the wheel turns.
    void paint(QPainter& painter, QSizeF size, qreal scale) const override;

protected:
    void showIn(PictureNode& node, QSize pixels, qreal scale) override;

private:
    static constexpr int spokeCount = 8;

    QColor m_tint = Qt::black;
    int m_step = 0;
};

} // namespace tessary::look
