#include "ui/look/DesktopTheme.h"

#include "desktop/Compositor.h"

#include <QEvent>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QRegularExpression>

#include <algorithm>

namespace tessary::look {

DesktopTheme::DesktopTheme(QObject* parent) : QObject(parent)
{
    qGuiApp->installEventFilter(this);
    using desktop::PortalAppearance;
    connect(&m_portal, &PortalAppearance::changed, this, &DesktopTheme::paletteChanged);
    connect(&m_portal, &PortalAppearance::changed, this, &DesktopTheme::fontChanged);
    connect(&m_portal, &PortalAppearance::changed, this, &DesktopTheme::animationsChanged);
}

bool DesktopTheme::dark() const
{
    return m_portal.prefersDark() || QGuiApplication::palette().color(QPalette::Window).lightnessF() < 0.5F;
}

QColor DesktopTheme::accent()
{
    return QGuiApplication::palette().color(QPalette::Active, QPalette::Highlight);
}

QColor DesktopTheme::textOnAccent()
{
    return QGuiApplication::palette().color(QPalette::Active, QPalette::HighlightedText);
}

bool DesktopTheme::composited()
{
    return desktop::isComposited();
}

QFont DesktopTheme::font() const
{
    const QFont font = described(m_portal.changedFont(), QGuiApplication::font());
    // On X11 the desktop scales text by the screen's resolution, which the toolkit follows.
    const bool scaledAlready = QGuiApplication::platformName() == QLatin1StringView("xcb");
    return scaledAlready ? font : scaled(font, m_portal.textScale(), font.weight());
}

QFont DesktopTheme::described(const QString& description, const QFont& otherwise)
{
    if (description.isEmpty()) { // mostly, and what reads descriptions is large
        return otherwise;
    }
    static const QRegularExpression form(
        QStringLiteral(
            "^(.+?)(?:[ ,]+(?:regular|normal|roman|book|thin|light|medium|bold|heavy|black|oblique|italic|"
            "(?:ultra|extra|semi|demi)-?(?:light|bold|condensed|expanded)|condensed|expanded))*"
            "[ ,]+(\\d{1,3}(?:\\.\\d+)?)(px)?$"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = form.match(description.trimmed());
    const double size = match.captured(2).toDouble();
    if (size <= 0) { // no description, or one that is not understood
        return otherwise;
    }
    QFont result(otherwise);
    result.setFamilies({match.captured(1)});
    if (match.hasCaptured(3)) {
        result.setPixelSize(std::max(1, qRound(size)));
    } else {
        result.setPointSizeF(size);
    }
    return result;
}

QFont DesktopTheme::scaled(const QFont& font, qreal factor, int weight)
{
    QFont result(font);
    if (font.pixelSize() == -1) { // its size is in points of print
        result.setPointSizeF(font.pointSizeF() * factor);
    } else {
        result.setPixelSize(qRound(font.pixelSize() * factor));
    }
    result.setWeight(static_cast<QFont::Weight>(weight));
    return result;
}

QFont DesktopTheme::sized(const QFont& font, qreal points, int weight)
{
    QFont result(font);
    result.setPixelSize(qRound(points)); // a point of the layout, not of print
    result.setWeight(static_cast<QFont::Weight>(weight));
    return result;
}

qreal DesktopTheme::pointsOf(const QFont& font)
{
    return QFontInfo(font).pixelSize();
}

QFont DesktopTheme::monospaced(const QFont& font)
{
    QFont result(font);
    result.setFamilies(QFontDatabase::systemFont(QFontDatabase::FixedFont).families());
    return result;
}

QFont DesktopTheme::inFirstOf(const QStringList& families, const QFont& font)
{
    // Asked for a single name, the toolkit looks for all that could stand in for it, which takes long.
    const QStringList installed = QFontDatabase::families();
    const auto found = std::find_if(families.begin(), families.end(),
                                    [&installed](const auto& name) { return installed.contains(name); });
    QFont result(font);
    if (found != families.end()) {
        result.setFamilies({*found});
    }
    return result;
}

bool DesktopTheme::eventFilter(QObject* /*watched*/, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ApplicationPaletteChange:
        Q_EMIT paletteChanged();
        break;
    case QEvent::ApplicationFontChange:
        Q_EMIT fontChanged();
        break;
    default:
        break;
    }
    return false;
}

} // namespace tessary::look
