#include "look/SquirclePainter.h"

#include "look/SquirclePath.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace tessary::look {

SquirclePainter::SquirclePainter(QQuickItem* parent) : VisiblePainter(parent)
{
    setAntialiasing(true);
    connect(this, &SquirclePainter::lookChanged, this, [this] { update(); });
}

void SquirclePainter::paint(QPainter* painter)
{
    const QRectF shape = boundingRect().marginsRemoved({m_margin, m_margin, m_margin, m_margin});
    if (m_fill.alpha() > 0) {
        painter->fillPath(squirclePath(shape, m_radius), m_fill);
    }
    if (m_lineWidth <= 0 || m_outline.alpha() == 0) {
        return;
    }
    // The line lies centred on the edge when that covers whole device pixels, else half a pixel further in.
    const qreal scale = std::max(painter->device()->devicePixelRatio(), painter->transform().m11());
    const qreal pixels = std::max(std::round(m_lineWidth * scale), qreal(1));
    const qreal inset = std::fmod(pixels, 2) > 0 ? 0.5 / scale : 0;
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
    painter->strokePath(squirclePath(shape.marginsRemoved({inset, inset, inset, inset}), m_radius - inset),
                        pen);
}

} // namespace tessary::look
