#include "ui/look/SpokeWheel.h"

#include "ui/look/PictureNode.h"
#include "ui/look/SharedTexture.h"

#include <QPainter>

namespace tessary::look {
namespace {

struct WheelLook
{
    QSize pixels;
    QRgb tint;

    bool operator==(const WheelLook&) const = default;
};

} // namespace

void SpokeWheel::showIn(PictureNode& node, QSize pixels, qreal scale)
{
    const auto texture = sharedTexture(*window(), WheelLook{pixels, m_tint.rgba()}, [this, pixels, scale] {
        return draw({spokeCount * pixels.width(), pixels.height()}, scale);
    });
    const QPointF place(m_step * pixels.width(), 0);
    node.show(texture, {{QRectF(place, pixels), QRectF(QPointF(), pixels)}}, scale);
}

void SpokeWheel::paint(QPainter& painter, QSizeF size, qreal /*scale*/) const
{
    constexpr qreal lengthShare = 0.28;
    constexpr qreal fading = 0.75; // what the faintest lacks of the brightest
    const QSizeF wheel(size.width() / spokeCount, size.height());
    const qreal width = wheel.width() / 8;
    const QRectF spoke(-width / 2, -wheel.height() / 2, width, wheel.height() * lengthShare);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_tint);
    painter.translate(wheel.width() / 2, wheel.height() / 2);
    for (int step = 0; step < spokeCount; ++step) {
        for (int index = 0; index < spokeCount; ++index) {
            const int behind = (step - index + spokeCount) % spokeCount;
            painter.setOpacity(1 - fading * behind / (spokeCount - 1));
            painter.drawRoundedRect(spoke, width / 2, width / 2);
            painter.rotate(360.0 / spokeCount);
        }
        painter.translate(wheel.width(), 0);
    }
}

} // namespace tessary::look
