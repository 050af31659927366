#include "look/VisiblePainter.h"

namespace tessary::look {

QSGNode* VisiblePainter::updatePaintNode(QSGNode* node, UpdatePaintNodeData* data)
{
    return isVisible() ? QQuickPaintedItem::updatePaintNode(node, data) : node;
}

void VisiblePainter::itemChange(ItemChange change, const ItemChangeData& data)
{
    QQuickPaintedItem::itemChange(change, data);
    if (change == ItemVisibleHasChanged && data.boolValue) {
        update();
    }
}

} // namespace tessary::look
