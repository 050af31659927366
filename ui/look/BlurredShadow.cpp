#include "look/BlurredShadow.h"

#include "look/SquirclePath.h"

#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numeric>
#include <vector>

namespace tessary::look {
namespace {

/// Weights of a normal distribution from -2 to 2 standard deviations, `reach` pixels to each side.
std::vector<float> blurKernel(int reach)
{
    std::vector<float> weights;
    for (int x = -reach; x <= reach; ++x) {
        const float deviations = 2.F * static_cast<float>(x) / static_cast<float>(std::max(reach, 1));
        weights.push_back(std::exp(-deviations * deviations / 2));
    }
    const float sum = std::accumulate(weights.begin(), weights.end(), 0.F);
    std::transform(weights.begin(), weights.end(), weights.begin(),
                   [sum](float weight) { return weight / sum; });
    return weights;
}

/// One pass along x, with rows and columns swapped in the result; two passes blur both ways.
QImage blurredAndTurned(const QImage& alpha, const std::vector<float>& kernel)
{
    const int reach = static_cast<int>(kernel.size()) / 2;
    QImage result(alpha.height(), alpha.width(), QImage::Format_Alpha8);
    const int width = alpha.width();
    // With as much of nothing at both ends as the kernel reaches, so that no sum has to look where it is.
    std::vector<float> row(static_cast<std::size_t>(width + 2 * reach));
    uchar* const turned = result.bits();
    const qsizetype stride = result.bytesPerLine();
    for (int y = 0; y < alpha.height(); ++y) {
        std::copy_n(alpha.constScanLine(y), width, row.begin() + reach);
        for (int x = 0; x < width; ++x) {
            constexpr float rounding = 0.5F; // what is cut off afterwards is rounded then
            turned[x * stride + y] = static_cast<uchar>(
                std::inner_product(kernel.begin(), kernel.end(), row.begin() + x, rounding));
        }
    }
    return result;
}

struct Tile
{
    QSizeF shape;    // the shape whose shadow it is
    QMarginsF reach; // of the shadow beyond the shape
    qreal radius;
    qreal blur;
    QPointF offset;
    QColor color;
    qreal scale;

    bool operator==(const Tile&) const = default;
};

QImage drawTile(const Tile& tile)
{
    const QRectF bounds = QRectF(QPointF(), tile.shape).marginsAdded(tile.reach);
    QImage alpha((bounds.size() * tile.scale).toSize(), QImage::Format_Alpha8);
    alpha.fill(0);
    const QPainterPath shape = squirclePath(QRectF(QPointF(), tile.shape), tile.radius);
    {
        QPainter painter(&alpha);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(tile.scale, tile.scale);
        painter.translate(tile.offset - bounds.topLeft());
        painter.fillPath(shape, Qt::black);
    }
    const auto kernel = blurKernel(static_cast<int>(std::lround(tile.blur * tile.scale)));
    alpha = blurredAndTurned(blurredAndTurned(alpha, kernel), kernel);

    QImage picture(alpha.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(tile.color);
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, alpha);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.scale(tile.scale, tile.scale);
    painter.translate(-bounds.topLeft());
    painter.fillPath(shape, Qt::black);
    return picture;
}

/// The tile in nine parts, of which the sides stretch and the middle, which is empty, is left out. The
/// ready-made node for that mixes up points and pixels where the two differ.
class ShadowNode : public QSGNode
{
public:
    explicit ShadowNode(QQuickWindow& window)
    {
        for (QSGImageNode*& part : m_parts) {
            part = window.createImageNode();
            part->setFiltering(QSGTexture::Linear);
            appendChildNode(part);
        }
    }

    void show(QQuickWindow& window, const Tile& tile, const QRectF& bounds)
    {
        if (!m_texture || !(tile == m_tile)) {
            m_tile = tile;
            m_texture.reset(window.createTextureFromImage(drawTile(tile)));
        }
        const QSizeF picture = QSizeF(m_texture->textureSize()) / tile.scale;
        const QSizeF half((tile.shape.width() - 1) / 2, (tile.shape.height() - 1) / 2);
        const QMarginsF corners =
            tile.reach + QMarginsF(half.width(), half.height(), half.width(), half.height());
        const std::array<qreal, 4> fromX{0, corners.left(), picture.width() - corners.right(),
                                         picture.width()};
        const std::array<qreal, 4> fromY{0, corners.top(), picture.height() - corners.bottom(),
                                         picture.height()};
        const std::array<qreal, 4> toX{bounds.left(), bounds.left() + corners.left(),
                                       bounds.right() - corners.right(), bounds.right()};
        const std::array<qreal, 4> toY{bounds.top(), bounds.top() + corners.top(),
                                       bounds.bottom() - corners.bottom(), bounds.bottom()};
        std::size_t next = 0;
        for (std::size_t row = 0; row < 3; ++row) {
            for (std::size_t column = 0; column < 3; ++column) {
                if (row == 1 && column == 1) {
                    continue;
                }
                QSGImageNode* part = m_parts[next++];
                part->setTexture(m_texture.get());
                part->setSourceRect(QRectF(QPointF(fromX[column], fromY[row]) * tile.scale,
                                           QPointF(fromX[column + 1], fromY[row + 1]) * tile.scale));
                part->setRect(QRectF(QPointF(toX[column], toY[row]), QPointF(toX[column + 1], toY[row + 1])));
            }
        }
    }

private:
    std::array<QSGImageNode*, 8> m_parts{};
    Tile m_tile{};
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
    // Edges that stretch must be straight: the corner, its shadow and the blur all end before the middle.
    const qreal corner = std::ceil(squircleCornerReach(m_radius) + m_blur);
    const QSizeF shape(std::min(width(), 2 * (corner + std::abs(m_offset.x())) + 1),
                       std::min(height(), 2 * (corner + std::abs(m_offset.y())) + 1));
    const QMarginsF reach(std::ceil(std::max(m_blur - m_offset.x(), qreal(0))),
                          std::ceil(std::max(m_blur - m_offset.y(), qreal(0))),
                          std::ceil(std::max(m_blur + m_offset.x(), qreal(0))),
                          std::ceil(std::max(m_blur + m_offset.y(), qreal(0))));
    const Tile tile{shape, reach, m_radius, m_blur, m_offset, m_color, window()->effectiveDevicePixelRatio()};
    shadow->show(*window(), tile, boundingRect().marginsAdded(reach));
    return shadow;
}

} // namespace tessary::look
