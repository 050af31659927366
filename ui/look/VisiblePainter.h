#pragma once

#include <QQuickPaintedItem>
#include <QtQml/qqml.h>

namespace tessary::look {

/// A painted item that is painted, and takes memory for its picture, only while it can be seen. The scene
/// itself would paint what is hidden, too.
class VisiblePainter : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    using QQuickPaintedItem::QQuickPaintedItem;

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
};

} // namespace tessary::look
