#include "ui/look/ShadowTile.h"

#include "ui/look/SquirclePath.h"

#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <cmath>
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
    std::vector<float> row(static_cast<std::size_t>(width) + kernel.size());
    std::vector<float> sums(static_cast<std::size_t>(width));
    uchar* const turned = result.bits();
    const qsizetype stride = result.bytesPerLine();
    for (int y = 0; y < alpha.height(); ++y) {
        std::copy_n(alpha.constScanLine(y), width, row.begin() + reach);
        constexpr float rounding = 0.5F; // what is cut off afterwards is rounded then
        std::fill(sums.begin(), sums.end(), rounding);
        for (std::size_t at = 0; at < kernel.size();
             ++at) { // one weight for all of the row: many sums at once
            std::transform(sums.begin(), sums.end(), row.begin() + static_cast<std::ptrdiff_t>(at),
                           sums.begin(),
                           [weight = kernel[at]](float sum, float value) { return sum + weight * value; });
        }
        for (int x = 0; x < width; ++x) {
            turned[x * stride + y] = static_cast<uchar>(sums[static_cast<std::size_t>(x)]);
        }
    }
    return result;
}

} // namespace

ShadowTile shadowTile(QSize shape, qreal radius, qreal blur, QPointF offset, QColor color)
{
    // Edges that stretch must be straight: the corner, its shadow and the blur all end before the middle.
    const qreal corner = squircleCornerReach(radius) + blur;
    const auto side = [corner](qreal shift) { return 2 * qCeil(corner + std::abs(shift)) + 1; };
    const auto beyond = [blur](qreal shift) { return qCeil(std::max(blur + shift, qreal(0))); };
    return {shape.boundedTo({side(offset.x()), side(offset.y())}),
            {beyond(-offset.x()), beyond(-offset.y()), beyond(offset.x()), beyond(offset.y())},
            radius,
            blur,
            offset,
            color};
}

QImage drawShadow(const ShadowTile& tile)
{
    const QPointF corner(tile.reach.left(), tile.reach.top());
    QImage alpha(tile.shape.grownBy(tile.reach), QImage::Format_Alpha8);
    alpha.fill(0);
    const QPainterPath shape = squirclePath(QRectF(corner, tile.shape), tile.radius);
    {
        QPainter painter(&alpha);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(shape.translated(tile.offset), Qt::black);
    }
    const auto kernel = blurKernel(qRound(tile.blur));
    alpha = blurredAndTurned(blurredAndTurned(alpha, kernel), kernel);

    QImage picture(alpha.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(tile.color);
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, alpha);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(shape, Qt::black);
    return picture;
}

} // namespace tessary::look
