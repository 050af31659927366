#include "ui/look/Symbol.h"

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cmath>

namespace tessary::look {
namespace {

constexpr qreal sizeByFontSize = 1.2;

QImage drawingOf(const QString& name, QSize size, qreal turn)
{
    QImage drawing(size, QImage::Format_ARGB32_Premultiplied);
    drawing.fill(Qt::transparent);
    QSvgRenderer renderer(QStringLiteral(":/qt/qml/Tessary/Look/symbols/%1.svg").arg(name));
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    {
        QPainter painter(&drawing);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF bounds(QPointF(), size);
        painter.translate(bounds.center());
        painter.rotate(turn);
        painter.translate(-bounds.center());
        renderer.render(&painter, bounds);
    }
    return drawing;
}

/// The drawing's ink as coverage, whatever its own colours.
QImage inkOf(const QImage& drawing)
{
    QImage ink(drawing.size(), QImage::Format_Alpha8);
    for (int y = 0; y < ink.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(drawing.constScanLine(y));
        uchar* to = ink.scanLine(y);
        for (int x = 0; x < ink.width(); ++x) {
            to[x] = static_cast<uchar>(qAlpha(from[x]) - qRed(from[x])); // red is premultiplied
        }
    }
    return ink;
}

/// That colour where the coverage is.
QImage tinted(const QColor& color, const QImage& coverage)
{
    QImage result(coverage.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(color);
    QPainter tint(&result);
    tint.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    tint.drawImage(0, 0, coverage);
    return result;
}

} // namespace

void Symbol::setFontSize(qreal size)
{
    m_fontSize = size;
    const qreal side = std::round(size * sizeByFontSize);
    setImplicitSize(side, side);
    Q_EMIT lookChanged();
}

void Symbol::paint(QPainter& painter, QSizeF size, qreal scale) const
{
    if (m_name.isEmpty()) {
        return;
    }
    const QImage drawing = drawingOf(m_name, (size * scale).toSize(), m_turn);
    if (m_backing.alpha() > 0) {
        painter.drawImage(QRectF(QPointF(), size), tinted(m_backing, drawing));
    }
    painter.drawImage(QRectF(QPointF(), size), tinted(m_color, inkOf(drawing)));
}

} // namespace tessary::look
