#pragma once

#include "ui/look/VisiblePainter.h"

#include <QColor>
#include <QQuickItem>
#include <QSizeF>
#include <QString>
#include <QtQml/qqml.h>

namespace tessary::look {

/// One of the program's drawings in one colour. In a drawing black is ink, white is cut out, and what lies
/// between is ink in part.
class Symbol
    : public tessary::look::VisiblePainter // in full: the linter of the screens knows it by that name
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name MEMBER m_name NOTIFY lookChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY lookChanged)
    /// Of what is cut out; transparent for nothing.
    Q_PROPERTY(QColor backing MEMBER m_backing NOTIFY lookChanged)
    /// Clockwise, in degrees; drawn so rather than turned as a picture, which would blur it.
    Q_PROPERTY(qreal turn MEMBER m_turn NOTIFY lookChanged)
    /// The size of the text that it goes with, in points; the drawing is a little larger.
    Q_PROPERTY(qreal fontSize READ fontSize WRITE setFontSize NOTIFY lookChanged)

public:
    using VisiblePainter::VisiblePainter;

    [[nodiscard]] qreal fontSize() const { return m_fontSize; }

    void setFontSize(qreal size);
    void paint(QPainter& painter, QSizeF size, qreal scale) const override;

private:
    QString m_name;
    QColor m_color = Qt::black;
    QColor m_backing = Qt::transparent;
    qreal m_turn = 0;
    qreal m_fontSize{};
};

} // namespace tessary::look
