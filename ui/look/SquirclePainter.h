#pragma once

#include "look/VisiblePainter.h"

#include <QColor>
#include <QVariantList>
#include <QtQml/qqml.h>

namespace tessary::look {

/// Paints a squircle `margin` inside its own bounds, so that an outline may lie on the shape's edge. Use
/// Squircle, which lays the margin outside the shape's rectangle.
class SquirclePainter
    : public tessary::look::VisiblePainter // in full: the linter of the screens knows it by that name
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal margin MEMBER m_margin NOTIFY lookChanged)
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY lookChanged)
    Q_PROPERTY(QColor fill MEMBER m_fill NOTIFY lookChanged)
    Q_PROPERTY(QColor outline MEMBER m_outline NOTIFY lookChanged)
    Q_PROPERTY(qreal lineWidth MEMBER m_lineWidth NOTIFY lookChanged)
    /// Lengths of dashes and gaps in points, in turn; empty for a solid line. Dashes have butt caps, corners
    /// are mitred with a limit of 10 line widths.
    Q_PROPERTY(QVariantList dashes MEMBER m_dashes NOTIFY lookChanged)

public:
    explicit SquirclePainter(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void lookChanged();

private:
    qreal m_margin = 0;
    qreal m_radius = 0;
    QColor m_fill = Qt::transparent;
    QColor m_outline = Qt::transparent;
    qreal m_lineWidth = 0;
    QVariantList m_dashes;
};

} // namespace tessary::look
