#pragma once

#include "desktop/PortalAppearance.h"

#include <QColor>
#include <QFont>
#include <QObject>
#include <QtQml/qqml.h>

namespace tessary::look {

/// What the desktop asks of a program's look, followed while it runs.
class DesktopTheme : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The palette is dark, or the desktop's portal asks for a dark appearance and the palette does not
    /// follow it.
    Q_PROPERTY(bool dark READ dark NOTIFY paletteChanged)
    Q_PROPERTY(bool highContrast READ highContrast NOTIFY paletteChanged)
    Q_PROPERTY(QColor accent READ accent NOTIFY paletteChanged)
    Q_PROPERTY(QColor textOnAccent READ textOnAccent NOTIFY paletteChanged)
    Q_PROPERTY(QFont font READ font NOTIFY fontChanged)
    /// False when changes are to apply at once.
    Q_PROPERTY(bool animations READ animations NOTIFY animationsChanged)
    /// A window may let the desktop behind it show through.
    Q_PROPERTY(bool composited READ composited NOTIFY compositorLookedFor)

public:
    explicit DesktopTheme(QObject* parent = nullptr);

    [[nodiscard]] bool dark() const;
    [[nodiscard]] static QColor accent();
    [[nodiscard]] static QColor textOnAccent();
    [[nodiscard]] static bool composited();
    [[nodiscard]] QFont font() const;

    [[nodiscard]] bool highContrast() const { return m_portal.highContrast(); }

    [[nodiscard]] bool animations() const { return m_portal.animations(); }

    /// The font that desktops describe like "Cantarell Bold 11", whose style is left to the texts; the other
    /// one when it is not described like that.
    [[nodiscard]] static QFont described(const QString& description, const QFont& otherwise);
    /// The desktop's font at a multiple of its own size.
    Q_INVOKABLE [[nodiscard]] static QFont scaled(const QFont& font, qreal factor, int weight);
    /// The same family in a fixed size in points.
    Q_INVOKABLE [[nodiscard]] static QFont sized(const QFont& font, qreal points, int weight);
    /// The size of that font's text in points of the layout.
    Q_INVOKABLE [[nodiscard]] static qreal pointsOf(const QFont& font);
    /// In the desktop's fixed-width family.
    Q_INVOKABLE [[nodiscard]] static QFont monospaced(const QFont& font);
    /// In the first of these families that is installed, if one is.
    Q_INVOKABLE [[nodiscard]] static QFont inFirstOf(const QStringList& families, const QFont& font);

Q_SIGNALS:
    void paletteChanged();
    void fontChanged();
    void animationsChanged();
    /// Nothing tells when that changes, so it is asked for again now and then, by this.
    void compositorLookedFor();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    desktop::PortalAppearance m_portal;
};

} // namespace tessary::look
