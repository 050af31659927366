#include "ui/look/ProgressItem.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QQuickWindow>

#include <algorithm>

namespace tessary::look {
namespace {

constexpr int whole = 100;

/// Lives as long as its item, in the toolkit's care.
class ProgressInterface : public QAccessibleObject, public QAccessibleValueInterface
{
public:
    explicit ProgressInterface(ProgressItem* item) : QAccessibleObject(item) {}

    [[nodiscard]] QWindow* window() const override { return item().window(); }

    [[nodiscard]] QAccessibleInterface* parent() const override
    {
        // What is no part of the tree has no interface.
        for (QQuickItem* above = item().parentItem(); above != nullptr; above = above->parentItem()) {
            if (QAccessibleInterface* found = QAccessible::queryAccessibleInterface(above)) {
                return found;
            }
        }
        return QAccessible::queryAccessibleInterface(window());
    }

    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }

    [[nodiscard]] int childCount() const override { return 0; }

    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        switch (kind) {
        case QAccessible::Name:
            return item().label();
        case QAccessible::Description:
            return item().description();
        default:
            return {};
        }
    }

    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ProgressBar; }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state;
        state.readOnly = true;
        state.disabled = !item().isEnabled();
        state.invisible = window() == nullptr || !window()->isVisible() || !item().isVisible();
        return state;
    }

    [[nodiscard]] QRect rect() const override
    {
        if (window() == nullptr) {
            return {};
        }
        const QRect place = item().mapRectToScene(item().boundingRect()).toRect();
        return {window()->mapToGlobal(place.topLeft()), place.size()};
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
    }

    [[nodiscard]] QVariant currentValue() const override { return item().percent(); }

    void setCurrentValue(const QVariant& /*value*/) override {}

    [[nodiscard]] QVariant maximumValue() const override { return whole; }

    [[nodiscard]] QVariant minimumValue() const override { return 0; }

    [[nodiscard]] QVariant minimumStepSize() const override { return 1; }

private:
    [[nodiscard]] ProgressItem& item() const { return *static_cast<ProgressItem*>(object()); }
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object)
{
    auto* item = qobject_cast<ProgressItem*>(object);
    return item != nullptr ? new ProgressInterface(item) : nullptr;
}

} // namespace

ProgressItem::ProgressItem(QQuickItem* parent) : QQuickItem(parent)
{
    QAccessible::installFactory(makeInterface); // once: the toolkit knows it then
}

void ProgressItem::setLabel(const QString& label)
{
    if (label != m_label) {
        m_label = label;
        Q_EMIT labelChanged();
    }
}

void ProgressItem::setDescription(const QString& description)
{
    if (description != m_description) {
        m_description = description;
        Q_EMIT descriptionChanged();
    }
}

void ProgressItem::setPercent(int percent)
{
    percent = std::clamp(percent, 0, whole);
    if (percent == m_percent) {
        return;
    }
    m_percent = percent;
    Q_EMIT percentChanged();
    QAccessibleValueChangeEvent change(this, m_percent);
    QAccessible::updateAccessibility(&change);
}

} // namespace tessary::look
