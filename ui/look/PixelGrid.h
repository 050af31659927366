#pragma once

#include <QPointF>

#include <optional>

class QSGNode;

namespace tessary::look {

/// What a node must move its drawing by, in points, so that it lies on whole device pixels. None while the
/// node is scaled or turned, which no grid would fit. For the render thread, in preprocess().
/// @param scale device pixels per point
[[nodiscard]] std::optional<QPointF> offGrid(const QSGNode& node, qreal scale);

} // namespace tessary::look
