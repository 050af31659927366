#include "ui/look/VisiblePainter.h"

#include "ui/look/PictureNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGTexture>

namespace tessary::look {

VisiblePainter::VisiblePainter(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &VisiblePainter::lookChanged, this, [this] {
        m_stale = true;
        update();
    });
}

int VisiblePainter::overhang(qreal /*scale*/) const
{
    return 0;
}

bool VisiblePainter::canBeSeen() const
{
    return isVisible() && opacity() > 0 && !size().isEmpty();
}

QSGNode* VisiblePainter::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/)
{
    if (!canBeSeen()) {
        delete node;
        return nullptr;
    }
    const qreal scale = window()->effectiveDevicePixelRatio();
    const QSize pixels = (size() * scale).toSize().expandedTo({1, 1});
    if (node != nullptr && !m_stale && pixels == m_shownPixels && scale == m_shownScale) {
        return node;
    }
    m_stale = false;
    m_shownPixels = pixels;
    m_shownScale = scale;
    auto* picture = node != nullptr ? static_cast<PictureNode*>(node) : new PictureNode(*window());
    showIn(*picture, pixels, scale);
    return picture;
}

void VisiblePainter::showIn(PictureNode& node, QSize pixels, qreal scale)
{
    const std::shared_ptr<QSGTexture> texture(window()->createTextureFromImage(draw(pixels, scale)));
    node.show(texture, {wholePicture(pixels, overhang(scale))}, scale);
}

QImage VisiblePainter::draw(QSize pixels, qreal scale) const
{
    const int margin = overhang(scale);
    QImage image(pixels.grownBy({margin, margin, margin, margin}), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(margin, margin);
        painter.scale(scale, scale);
        paint(painter, QSizeF(pixels) / scale, scale);
    }
    return image;
}

void VisiblePainter::itemChange(ItemChange change, const ItemChangeData& data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemVisibleHasChanged || change == ItemOpacityHasChanged ||
        change == ItemDevicePixelRatioHasChanged) {
        update();
    }
}

} // namespace tessary::look
