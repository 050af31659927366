#pragma once

#include <QImage>
#include <QQuickItem>
#include <QRectF>
#include <QSize>
#include <QSizeF>
#include <QtQml/qqml.h>

namespace tessary::look {

class PictureNode;

/// An item that paints itself into a picture of whole device pixels, which lies on whole device pixels
/// wherever the item itself comes to rest. It is painted, and takes memory for its picture, only while it can
/// be seen.
class VisiblePainter : public QQuickItem
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit VisiblePainter(QQuickItem* parent = nullptr);

    /// Paints the shape of that size, in points, from its top left corner on.
    /// @param scale device pixels per point
    virtual void paint(QPainter& painter, QSizeF size, qreal scale) const = 0;

Q_SIGNALS:
    /// What is painted has changed.
    void lookChanged();

protected:
    /// By how many device pixels the drawing reaches out of the item, on every side.
    [[nodiscard]] virtual int overhang(qreal scale) const;

    /// Has the node show the item, of that size in device pixels. While the scene is brought up to date.
    virtual void showIn(PictureNode& node, QSize pixels, qreal scale);

    /// What is painted, overhang included.
    [[nodiscard]] QImage draw(QSize pixels, qreal scale) const;

    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    [[nodiscard]] bool canBeSeen() const;

    bool m_stale = true;
    QSize m_shownPixels;
    qreal m_shownScale{};
};

} // namespace tessary::look
