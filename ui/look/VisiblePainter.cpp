#include "ui/look/VisiblePainter.h"

#include "ui/look/PixelGrid.h"

#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <memory>

namespace tessary::look {
namespace {

/// The picture, kept on the grid of device pixels from frame to frame: an item is not told when what it lies
/// in moves.
class PictureNode : public QSGNode
{
public:
    explicit PictureNode(QQuickWindow& window) : m_image(window.createImageNode())
    {
        setFlag(UsePreprocess);
        m_image->setOwnsTexture(true);
        m_image->setFiltering(QSGTexture::Linear);
        appendChildNode(m_image);
    }

    [[nodiscard]] bool shows(QSize pixels, qreal scale) const
    {
        return pixels == m_pixels && scale == m_scale;
    }

    void show(QSGTexture* texture, QSize pixels, int overhang, qreal scale)
    {
        m_pixels = pixels;
        m_scale = scale;
        m_image->setTexture(texture);
        m_place = QRectF(QPointF(-overhang, -overhang) / scale,
                         QSizeF(pixels + 2 * QSize(overhang, overhang)) / scale);
        m_image->setRect(m_place.translated(offGrid(*this, scale)));
    }

    void preprocess() override
    {
        const QRectF place = m_place.translated(offGrid(*this, m_scale));
        if (m_image->rect() != place) {
            m_image->setRect(place);
        }
    }

private:
    QSGImageNode* m_image; // owned by the scene, as a child
    QRectF m_place;
    QSize m_pixels;
    qreal m_scale = 0;
};

} // namespace

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
    auto* picture = static_cast<PictureNode*>(node);
    const bool fresh = picture == nullptr;
    if (fresh) {
        picture = new PictureNode(*window());
    }
    const qreal scale = window()->effectiveDevicePixelRatio();
    const QSize pixels = (size() * scale).toSize().expandedTo({1, 1});
    if (!fresh && !m_stale && picture->shows(pixels, scale)) {
        return picture;
    }
    m_stale = false;
    const int margin = overhang(scale);
    QImage image(pixels + 2 * QSize(margin, margin), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(margin, margin);
    painter.scale(scale, scale);
    paint(painter, QSizeF(pixels) / scale, scale);
    painter.end();
    picture->show(window()->createTextureFromImage(image, QQuickWindow::TextureCanUseAtlas), pixels, margin,
                  scale);
    return picture;
}

void VisiblePainter::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        update();
    }
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
