#include "ui/look/Squircle.h"

#include "ui/look/PictureNode.h"
#include "ui/look/SharedTexture.h"
#include "ui/look/SquirclePath.h"

#include <QPainter>
#include <QPen>
#include <QtMath>

#include <algorithm>

namespace tessary::look {
namespace {

/// All that the picture of a squircle without dashes depends on.
struct SquircleLook
{
    QSize pixels;
    qreal scale;
    qreal radius;
    QColor fill;
    QColor outline;
    qreal lineWidth;
    bool lineInside;

    bool operator==(const SquircleLook&) const = default;
};

} // namespace

int Squircle::linePixels(qreal scale) const
{
    return m_lineWidth > 0 && m_outline.alpha() > 0 ? std::max(qRound(m_lineWidth * scale), 1) : 0;
}

int Squircle::overhang(qreal scale) const
{
    return m_lineInside ? 0 : linePixels(scale) / 2;
}

QSize Squircle::tileOf(QSize pixels, qreal scale) const
{
    constexpr int large = 64 * 1024; // pixels, of four bytes each
    if (pixels.width() * pixels.height() < large) {
        return pixels;
    }
    const int side = 2 * (qCeil(squircleCornerReach(m_radius) * scale) + linePixels(scale)) + 1;
    return pixels.boundedTo({side, side});
}

void Squircle::showIn(PictureNode& node, QSize pixels, qreal scale)
{
    if (!m_dashes.isEmpty()) {
        VisiblePainter::showIn(node, pixels, scale);
        return;
    }
    const QSize tile = tileOf(pixels, scale);
    const SquircleLook look{tile, scale, m_radius, m_fill, m_outline, m_lineWidth, m_lineInside};
    const auto texture = sharedTexture(*window(), look, [this, tile, scale] { return draw(tile, scale); });
    const int margin = overhang(scale);
    if (tile == pixels) {
        node.show(texture, {wholePicture(pixels, margin)}, scale);
        return;
    }
    auto parts = nineParts(tile, {margin, margin, margin, margin}, pixels);
    const auto middle = parts.begin() + 4; // by far the largest, and all of one colour
    const PlainPart plain{middle->to, m_fill};
    parts.erase(middle);
    node.show(texture, parts, scale, plain);
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
