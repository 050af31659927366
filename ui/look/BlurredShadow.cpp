#include "ui/look/BlurredShadow.h"

#include "ui/look/PictureNode.h"
#include "ui/look/ShadowTile.h"
#include "ui/look/SharedTexture.h"

namespace tessary::look {

void BlurredShadow::showIn(PictureNode& node, QSize pixels, qreal scale)
{
    const ShadowTile tile = shadowTile(pixels, m_radius * scale, m_blur * scale, m_offset * scale, m_color);
    auto parts = nineParts(tile.shape, tile.reach, pixels);
    parts.erase(parts.begin() + 4); // the middle, where there is nothing
    node.show(sharedTexture(*window(), tile, [&tile] { return drawShadow(tile); }), parts, scale);
}

} // namespace tessary::look
