#pragma once

#include <QPainterPath>
#include <QRectF>

namespace tessary::look {

/// A rounded rectangle whose corners have no jump of curvature: each eases from its straight edge into an arc
/// of the given radius and out again. Where a side is too short for that, the easing gives way before the
/// radius does.
[[nodiscard]] QPainterPath squirclePath(const QRectF& rect, qreal radius);

/// How far along an edge a corner of this radius reaches.
[[nodiscard]] qreal squircleCornerReach(qreal radius);

} // namespace tessary::look
