#include "ui/look/SpokeWheel.h"

#include <QPainter>

namespace tessary::look {

void SpokeWheel::paint(QPainter& painter, QSizeF size, qreal /*scale*/) const
{
    constexpr qreal lengthShare = 0.28;
    constexpr qreal fading = 0.75; // what the faintest lacks of the brightest
    const qreal width = size.width() / 8;
    const QRectF spoke(-width / 2, -size.height() / 2, width, size.height() * lengthShare);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_tint);
    painter.translate(size.width() / 2, size.height() / 2);
    for (int index = 0; index < spokeCount; ++index) {
        const int behind = (m_step - index + spokeCount) % spokeCount;
        painter.setOpacity(1 - fading * behind / (spokeCount - 1));
        painter.drawRoundedRect(spoke, width / 2, width / 2);
        painter.rotate(360.0 / spokeCount);
    }
}

} // namespace tessary::look
