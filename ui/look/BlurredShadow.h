#pragma once

#include <QColor>
#include <QPointF>
#include <QQuickItem>
#include <QRectF>
#include <QtQml/qqml.h>

namespace tessary::look {

/// The blurred shadow of a squircle that covers this item, drawn around it and nowhere below it, so that a
/// translucent shape does not show its own shadow. One small blurred picture is stretched to any size.
class BlurredShadow : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY lookChanged)
    /// How far the shadow fades beyond the edge, in points: two standard deviations of the blur.
    Q_PROPERTY(qreal blur MEMBER m_blur NOTIFY lookChanged)
    Q_PROPERTY(QPointF offset MEMBER m_offset NOTIFY lookChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY lookChanged)

public:
    explicit BlurredShadow(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void lookChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    qreal m_radius = 0;
    qreal m_blur = 0;
    QPointF m_offset;
    QColor m_color = Qt::transparent;
};

} // namespace tessary::look
