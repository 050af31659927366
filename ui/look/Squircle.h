#pragma once

#include "ui/look/VisiblePainter.h"

#include <QColor>
#include <QQuickItem>
#include <QSizeF>
#include <QVariantList>
#include <QtQml/qqml.h>

namespace tessary::look {

/// A rounded rectangle with continuous corners. Its outline lies on the edge and so reaches out of it.
class Squircle
    : public tessary::look::VisiblePainter // in full: the linter of the screens knows it by that name
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY lookChanged)
    Q_PROPERTY(QColor fill MEMBER m_fill NOTIFY lookChanged)
    /// Transparent for none.
    Q_PROPERTY(QColor outline MEMBER m_outline NOTIFY lookChanged)
    /// In points; drawn in whole device pixels, one at least.
    Q_PROPERTY(qreal lineWidth MEMBER m_lineWidth NOTIFY lookChanged)
    /// The outline stays within the edge.
    Q_PROPERTY(bool lineInside MEMBER m_lineInside NOTIFY lookChanged)
    /// Lengths of dashes and gaps in points, in turn; empty for a solid line. Dashes have butt caps, corners
    /// are mitred with a limit of 10 line widths.
    Q_PROPERTY(QVariantList dashes MEMBER m_dashes NOTIFY lookChanged)

public:
    using VisiblePainter::VisiblePainter;

    void paint(QPainter& painter, QSizeF size, qreal scale) const override;

protected:
    [[nodiscard]] int overhang(qreal scale) const override;
    void showIn(PictureNode& node, QSize pixels, qreal scale) override;

private:
    /// The smallest squircle whose middle row and column can be stretched to one of that size, where that
    /// saves much; else that size itself. In device pixels.
    [[nodiscard]] QSize tileOf(QSize pixels, qreal scale) const;

    /// The outline's width in device pixels; 0 for none.
    [[nodiscard]] int linePixels(qreal scale) const;

    qreal m_radius = 0;
    QColor m_fill = Qt::transparent;
    QColor m_outline = Qt::transparent;
    qreal m_lineWidth = 0;
    bool m_lineInside = false;
    QVariantList m_dashes;
};

} // namespace tessary::look
