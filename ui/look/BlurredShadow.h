#pragma once

#include "ui/look/VisiblePainter.h"

#include <QColor>
#include <QPointF>
#include <QQuickItem>
#include <QtQml/qqml.h>

namespace tessary::look {

/// The blurred shadow of a squircle that covers this item, drawn around it and nowhere below it, so that a
/// translucent shape does not show its own shadow. One small blurred picture is stretched to any size.
class BlurredShadow
    : public tessary::look::VisiblePainter // in full: the linter of the screens knows it by that name
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY lookChanged)
    /// How far the shadow fades beyond the edge, in points: two standard deviations of the blur.
    Q_PROPERTY(qreal blur MEMBER m_blur NOTIFY lookChanged)
    Q_PROPERTY(QPointF offset MEMBER m_offset NOTIFY lookChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY lookChanged)

public:
    using VisiblePainter::VisiblePainter;

    void paint(QPainter& /*painter*/, QSizeF /*size*/, qreal /*scale*/) const override {} // shown in parts

protected:
    void showIn(PictureNode& node, QSize pixels, qreal scale) override;

private:
    qreal m_radius{};
    qreal m_blur{};
    QPointF m_offset;
    QColor m_color = Qt::transparent;
};

} // namespace tessary::look
