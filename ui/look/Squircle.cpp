#include "ui/look/Squircle.h"

#include "ui/look/SquirclePath.h"

#include <QPainter>
#include <QPen>

#include <algorithm>

namespace tessary::look {

int Squircle::linePixels(qreal scale) const
{
    return m_lineWidth > 0 && m_outline.alpha() > 0 ? std::max(qRound(m_lineWidth * scale), 1) : 0;
}

int Squircle::overhang(qreal scale) const
{
    return m_lineInside ? 0 : linePixels(scale) / 2;
}

void Squircle::paint(QPainter& painter, QSizeF size, qreal scale) const
{
    const QRectF shape(QPointF(), size);
    if (m_fill.alpha() > 0) {
        painter.fillPath(squirclePath(shape, m_radius), m_fill);
    }
    const int pixels = linePixels(scale);
    if (pixels == 0) {
        return;
    }
    // The line lies centred on the edge when that covers whole device pixels, else half a pixel further in.
    const qreal inset = (pixels / 2.0 - overhang(scale)) / scale;
    QPen pen(m_outline, pixels / scale, m_dashes.isEmpty() ? Qt::SolidLine : Qt::CustomDashLine, Qt::FlatCap,
             Qt::MiterJoin);
    pen.setMiterLimit(10);
    if (!m_dashes.isEmpty()) {
        QList<qreal> pattern;
        for (const QVariant& length : m_dashes) {
            pattern.append(length.toReal() / pen.widthF()); // the pen counts in line widths
        }
        pen.setDashPattern(pattern);
    }
    painter.strokePath(squirclePath(shape.marginsRemoved({inset, inset, inset, inset}), m_radius - inset),
                       pen);
}

} // namespace tessary::look
