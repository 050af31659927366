#include "ui/look/BlurredShadow.h"

#include "ui/look/PixelGrid.h"
#include "ui/look/ShadowTile.h"

#include <QQuickWindow>
#include <QSGImageNode>

#include <array>
#include <memory>

namespace tessary::look {
namespace {

/// The tile in nine parts, of which the sides stretch and the middle, which is empty, is left out, on whole
/// device pixels. The ready-made node for that mixes up points and pixels where the two differ.
class ShadowNode : public QSGNode
{
public:
    explicit ShadowNode(QQuickWindow& window)
    {
        setFlag(UsePreprocess);
        for (QSGImageNode*& part : m_parts) {
            part = window.createImageNode();
            part->setFiltering(QSGTexture::Linear);
            appendChildNode(part);
        }
    }

    /// @param shape the size of what casts the shadow, in device pixels
    void show(QQuickWindow& window, const ShadowTile& tile, QSize shape, qreal scale)
    {
        if (!m_texture || !(tile == m_tile)) {
            m_tile = tile;
            m_texture.reset(window.createTextureFromImage(drawShadow(tile)));
        }
        m_shape = shape;
        m_scale = scale;
        layOut(offGrid(*this, scale));
    }

    void preprocess() override
    {
        const QPointF shift = offGrid(*this, m_scale);
        if (shift != m_shift) {
            layOut(shift);
        }
    }

private:
    /// Where the parts begin and end, along one side, in device pixels.
    static std::array<int, 4> cuts(int before, int tile, int shape, int after)
    {
        const int half = (tile - 1) / 2;
        return {-before, half, shape - (tile - 1 - half), shape + after};
    }

    void layOut(QPointF shift)
    {
        m_shift = shift;
        const QMargins& reach = m_tile.reach;
        const QSize& tile = m_tile.shape;
        const auto fromX = cuts(reach.left(), tile.width(), tile.width(), reach.right());
        const auto fromY = cuts(reach.top(), tile.height(), tile.height(), reach.bottom());
        const auto toX = cuts(reach.left(), tile.width(), m_shape.width(), reach.right());
        const auto toY = cuts(reach.top(), tile.height(), m_shape.height(), reach.bottom());
        std::size_t next = 0;
        for (std::size_t row = 0; row < 3; ++row) {
            for (std::size_t column = 0; column < 3; ++column) {
                if (row == 1 && column == 1) {
                    continue;
                }
                const QRectF from(QPointF(fromX[column], fromY[row]),
                                  QPointF(fromX[column + 1], fromY[row + 1]));
                const QRectF to(QPointF(toX[column], toY[row]) / m_scale,
                                QPointF(toX[column + 1], toY[row + 1]) / m_scale);
                QSGImageNode* part = m_parts[next++];
                part->setTexture(m_texture.get());
                part->setSourceRect(from.translated(reach.left(), reach.top()));
                part->setRect(to.translated(shift));
            }
        }
    }

    std::array<QSGImageNode*, 8> m_parts{};
    ShadowTile m_tile{};
    QSize m_shape;
    qreal m_scale = 1;
    QPointF m_shift;
    std::unique_ptr<QSGTexture> m_texture;
};

} // namespace

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
    auto* shadow = static_cast<ShadowNode*>(node);
    if (shadow == nullptr) {
        shadow = new ShadowNode(*window());
    }
    const qreal scale = window()->effectiveDevicePixelRatio();
    const QSize shape = (size() * scale).toSize().expandedTo({1, 1});
    shadow->show(*window(), shadowTile(shape, m_radius * scale, m_blur * scale, m_offset * scale, m_color),
                 shape, scale);
    return shadow;
}

} // namespace tessary::look
