#include "ui/look/BlurredShadow.h"

#include "ui/look/PictureNode.h"
#include "ui/look/ShadowTile.h"
#include "ui/look/SharedTexture.h"

namespace tessary::look {

BlurredShadow::BlurredShadow(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &BlurredShadow::lookChanged, this, &QQuickItem::update);
}

void BlurredShadow::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    update();
}

void BlurredShadow::itemChange(ItemChange change, const ItemChangeData& data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged || change == ItemVisibleHasChanged) {
        update();
    }
}

QSGNode* BlurredShadow::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/)
{
    if (!isVisible() || size().isEmpty() || m_color.alpha() == 0) {
        delete node;
        return nullptr;
    }
    auto* shadow = node != nullptr ? static_cast<PictureNode*>(node) : new PictureNode(*window());
    const qreal scale = window()->effectiveDevicePixelRatio();
    const QSize shape = (size() * scale).toSize().expandedTo({1, 1});
    const ShadowTile tile = shadowTile(shape, m_radius * scale, m_blur * scale, m_offset * scale, m_color);
    auto parts = nineParts(tile.shape, tile.reach, shape);
    parts.erase(parts.begin() + 4); // the middle, where there is nothing
    shadow->show(sharedTexture(*window(), tile, [&tile] { return drawShadow(tile); }), parts, scale);
    return shadow;
}

} // namespace tessary::look
