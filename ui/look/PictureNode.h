#pragma once

#include <QColor>
#include <QMargins>
#include <QPointF>
#include <QRectF>
#include <QSGNode>
#include <QSize>

#include <memory>
#include <optional>
#include <vector>

class QQuickWindow;
class QSGImageNode;
class QSGRectangleNode;
class QSGTexture;

namespace tessary::look {

/// A rectangle of a picture, and where it is shown, seen from the item's corner. Both in device pixels.
struct PicturePart
{
    QRectF from;
    QRectF to;
};

/// All of a picture of a shape of that size that reaches beyond it by a margin.
[[nodiscard]] PicturePart wholePicture(QSize shape, int margin);

/// Where there is nothing but one colour; nothing at all when that is transparent.
struct PlainPart
{
    QRectF to;
    QColor color = Qt::transparent;
};

/// A tile in nine parts, row by row, which fill the shape when those between the corners are stretched.
/// @param tile the size of the shape in the picture; the middle row and column can be stretched
/// @param reach of the picture beyond its shape
[[nodiscard]] std::vector<PicturePart> nineParts(QSize tile, QMargins reach, QSize shape);

/// Parts of a picture, and a plain rectangle, kept on the grid of device pixels from frame to frame: an item
/// is not told when what it lies in moves. For the render thread.
///
/// A transform node, though it moves nothing: below another, the toolkit's painter on the processor would
/// show a part that comes later where the window begins.
class PictureNode : public QSGTransformNode
{
public:
    explicit PictureNode(QQuickWindow& window);

    /// @param scale device pixels per point
    void show(std::shared_ptr<QSGTexture> texture, const std::vector<PicturePart>& parts, qreal scale,
              const PlainPart& plain = {});

    void preprocess() override;

private:
    struct Shown
    {
        QSGImageNode* node; ///< owned by the scene, as a child
        QRectF to;
    };

    void fill(const PlainPart& plain);
    void layOut(std::optional<QPointF> shift);

    QQuickWindow& m_window;
    std::shared_ptr<QSGTexture> m_texture;
    std::vector<Shown> m_parts;
    QSGRectangleNode* m_filled = nullptr; ///< owned like a part's
    QRectF m_filledTo;
    qreal m_scale{};
    std::optional<QPointF> m_shift; ///< none off the grid
};

} // namespace tessary::look
