#include "ui/look/PictureNode.h"

#include "ui/look/PixelGrid.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGMaterial>
#include <QSGRectangleNode>
#include <QSGRendererInterface>

#include <array>

namespace tessary::look {
namespace {

/// Where the parts begin and end along one side, from the shape's corner.
std::array<int, 4> cuts(int before, int tile, int shape, int after)
{
    const int half = (tile - 1) / 2;
    return {-before, half, shape - (tile - 1 - half), shape + after};
}

QRectF inPoints(const QRectF& place, qreal scale)
{
    return {place.topLeft() / scale, place.size() / scale};
}

} // namespace

PicturePart wholePicture(QSize shape, int margin)
{
    const QSizeF whole(shape.grownBy({margin, margin, margin, margin}));
    return {{QPointF(), whole}, {QPointF(-margin, -margin), whole}};
}

std::vector<PicturePart> nineParts(QSize tile, QMargins reach, QSize shape)
{
    const auto fromX = cuts(reach.left(), tile.width(), tile.width(), reach.right());
    const auto fromY = cuts(reach.top(), tile.height(), tile.height(), reach.bottom());
    const auto toX = cuts(reach.left(), tile.width(), shape.width(), reach.right());
    const auto toY = cuts(reach.top(), tile.height(), shape.height(), reach.bottom());
    std::vector<PicturePart> parts;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const QRectF from(QPointF(fromX[column], fromY[row]), QPointF(fromX[column + 1], fromY[row + 1]));
            parts.push_back({from.translated(reach.left(), reach.top()),
                             {QPointF(toX[column], toY[row]), QPointF(toX[column + 1], toY[row + 1])}});
        }
    }
    return parts;
}

PictureNode::PictureNode(QQuickWindow& window) : m_window(window)
{
    setFlag(UsePreprocess);
}

void PictureNode::show(std::shared_ptr<QSGTexture> texture, const std::vector<PicturePart>& parts,
                       qreal scale, const PlainPart& plain)
{
    while (m_parts.size() > parts.size()) {
        delete m_parts.back().node; // which takes itself out of the scene
        m_parts.pop_back();
    }
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto& [from, to] = parts[i];
        const bool fresh = i == m_parts.size();
        if (fresh) {
            m_parts.push_back({m_window.createImageNode(), {}});
        }
        QSGImageNode& node = *m_parts[i].node;
        node.setTexture(texture.get());
        node.setSourceRect(from);
        m_parts[i].to = to;
        if (fresh) { // only now: the scene looks at it at once
            node.setRect(inPoints(to, scale));
            appendChildNode(&node);
        }
    }
    fill(plain);
    m_texture = std::move(texture); // only now: the parts let go of the one before
    m_scale = scale;
    layOut(offGrid(*this, scale));
}

void PictureNode::fill(const PlainPart& plain)
{
    if (plain.color.alpha() == 0) {
        delete m_filled;
        m_filled = nullptr;
        return;
    }
    m_filledTo = plain.to;
    const bool fresh = m_filled == nullptr;
    if (fresh) {
        m_filled = m_window.createRectangleNode();
    }
    m_filled->setColor(plain.color);
    // What is opaque need not be mixed with what it covers. Where the processor paints there is no material.
    if (QSGRendererInterface::isApiRhiBased(m_window.rendererInterface()->graphicsApi())) {
        m_filled->material()->setFlag(QSGMaterial::Blending, plain.color.alpha() < 255);
    }
    if (fresh) {
        appendChildNode(m_filled);
    }
}

void PictureNode::preprocess()
{
    const std::optional<QPointF> shift = offGrid(*this, m_scale);
    if (shift != m_shift) {
        layOut(shift);
    }
}

void PictureNode::layOut(std::optional<QPointF> shift)
{
    m_shift = shift;
    const QPointF moved = shift.value_or(QPointF());
    for (const auto& [node, to] : m_parts) {
        // On the grid a pixel is a pixel, and what is stretched is one pixel wide; smoothly, that would take
        // long. Off the grid, only what is smooth meets its neighbours.
        node->setFiltering(shift ? QSGTexture::Nearest : QSGTexture::Linear);
        node->setRect(inPoints(to, m_scale).translated(moved));
    }
    if (m_filled != nullptr) {
        m_filled->setRect(inPoints(m_filledTo, m_scale).translated(moved));
    }
}

} // namespace tessary::look
