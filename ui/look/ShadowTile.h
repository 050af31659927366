#pragma once

#include <QColor>
#include <QImage>
#include <QMargins>
#include <QPointF>
#include <QSize>

namespace tessary::look {

/// The picture of a squircle's shadow, small enough to be stretched. All lengths in device pixels.
struct ShadowTile
{
    QSize shape;    ///< of the squircle whose shadow it is
    QMargins reach; ///< of the shadow beyond the squircle
    qreal radius;
    qreal blur; ///< two standard deviations
    QPointF offset;
    QColor color;

    bool operator==(const ShadowTile&) const = default;
};

/// The smallest tile that can be stretched to a squircle of that size: its middle row and column, of one
/// pixel each, lie on straight edges. A smaller squircle's tile is of its own size.
[[nodiscard]] ShadowTile shadowTile(QSize shape, qreal radius, qreal blur, QPointF offset, QColor color);

/// The shadow alone: where the squircle lies there is nothing.
[[nodiscard]] QImage drawShadow(const ShadowTile& tile);

} // namespace tessary::look
