#include "ui/look/PixelGrid.h"

#include <QMatrix4x4>
#include <QSGNode>

#include <cmath>

namespace tessary::look {

std::optional<QPointF> offGrid(const QSGNode& node, qreal scale)
{
    QMatrix4x4 place;
    for (const QSGNode* above = node.parent(); above != nullptr; above = above->parent()) {
        if (above->type() == QSGNode::TransformNodeType) {
            place = static_cast<const QSGTransformNode*>(above)->matrix() * place;
        }
    }
    QMatrix4x4 moved;
    moved.translate(place(0, 3), place(1, 3), place(2, 3));
    if (!qFuzzyCompare(place, moved)) {
        return std::nullopt;
    }
    const auto correction = [scale](qreal at) { return std::round(at * scale) / scale - at; };
    return QPointF(correction(place(0, 3)), correction(place(1, 3)));
}

} // namespace tessary::look
