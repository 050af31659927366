#include "ui/look/SquirclePath.h"

#include <QPointF>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessary::look {
namespace {

constexpr qreal fullSmoothing = 0.6; // the share of the corner's turn that is spent on easing in and out
constexpr qreal quarterTurn = std::numbers::pi / 2;

/// The measures of one corner, all along its two edges.
struct Corner
{
    qreal radius;
    qreal reach;      // from the corner point to where the edge begins to bend
    qreal handle;     // the easing's control points lie at 2/3 and at all of 3 handles
    qreal along;      // from the last control point to the arc, along the edge
    qreal across;     // and away from it
    qreal arcAngle;   // how far the arc turns
    qreal easedAngle; // how far the easing turns before the arc
};

Corner measure(qreal radius, qreal shortestSide)
{
    const qreal room = shortestSide / 2;
    Corner corner{};
    corner.radius = std::min(radius, room);
    const qreal smoothing = std::clamp(room / corner.radius - 1, qreal(0), fullSmoothing);
    corner.reach = (1 + smoothing) * corner.radius;
    corner.arcAngle = quarterTurn * (1 - smoothing);
    corner.easedAngle = quarterTurn * smoothing / 2;
    const qreal tangent = corner.radius * std::tan(corner.easedAngle / 2);
    corner.along = tangent * std::cos(corner.easedAngle);
    corner.across = tangent * std::sin(corner.easedAngle);
    const qreal arcSpan = std::numbers::sqrt2 * corner.radius * std::sin(corner.arcAngle / 2);
    corner.handle = (corner.reach - arcSpan - corner.along - corner.across) / 3;
    return corner;
}

/// @param tip where the edges would meet; @param in and @param out the unit directions before and after the
/// turn
void addCorner(QPainterPath& path, const Corner& corner, QPointF tip, QPointF in, QPointF out)
{
    const QPointF start = tip - corner.reach * in;
    const QPointF end = tip + corner.reach * out;
    const QPointF arcStart = start + (3 * corner.handle + corner.along) * in + corner.across * out;
    const QPointF arcEnd = end - (3 * corner.handle + corner.along) * out - corner.across * in;
    const QPointF startDirection = std::cos(corner.easedAngle) * in + std::sin(corner.easedAngle) * out;
    const QPointF endDirection = std::sin(corner.easedAngle) * in + std::cos(corner.easedAngle) * out;
    const qreal arcHandle = 4.0 / 3 * std::tan(corner.arcAngle / 4) * corner.radius;

    path.lineTo(start);
    path.cubicTo(start + 2 * corner.handle * in, start + 3 * corner.handle * in, arcStart);
    path.cubicTo(arcStart + arcHandle * startDirection, arcEnd - arcHandle * endDirection, arcEnd);
    path.cubicTo(end - 3 * corner.handle * out, end - 2 * corner.handle * out, end);
}

} // namespace

QPainterPath squirclePath(const QRectF& rect, qreal radius)
{
    QPainterPath path;
    if (rect.isEmpty()) {
        return path;
    }
    const Corner corner = measure(std::max(radius, qreal(0)), std::min(rect.width(), rect.height()));
    const QPointF right(1, 0);
    const QPointF down(0, 1);
    path.moveTo(rect.left() + corner.reach, rect.top());
    addCorner(path, corner, rect.topRight(), right, down);
    addCorner(path, corner, rect.bottomRight(), down, -right);
    addCorner(path, corner, rect.bottomLeft(), -right, -down);
    addCorner(path, corner, rect.topLeft(), -down, right);
    path.closeSubpath();
    return path;
}

qreal squircleCornerReach(qreal radius)
{
    return (1 + fullSmoothing) * radius;
}

} // namespace tessary::look
