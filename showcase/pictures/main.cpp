#include "showcase/pictures/Scenes.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QQuickWindow>
#include <QTest>

#include <cstdio>

namespace tessary::pictures {
namespace {

constexpr QSize windowSize(1000, 800);

/// A desktop's palette; without a desktop there is none that is dark.
QPalette palette(bool dark)
{
    QPalette colours(dark ? QColor(0x32, 0x32, 0x32) : QColor(0xec, 0xec, 0xec));
    colours.setColor(QPalette::Highlight, dark ? QColor(0x0a, 0x84, 0xff) : QColor(0x00, 0x7a, 0xff));
    colours.setColor(QPalette::HighlightedText, Qt::white);
    return colours;
}

/// The desktop tells every program that people want more contrast.
void askForContrast()
{
    static QDBusConnection desktop =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("desktop"));
    desktop.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    QDBusMessage change = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                                     QStringLiteral("org.freedesktop.portal.Settings"),
                                                     QStringLiteral("SettingChanged"));
    change.setArguments({QStringLiteral("org.freedesktop.appearance"), QStringLiteral("contrast"),
                         QVariant::fromValue(QDBusVariant(1U))});
    desktop.send(change);
}

bool makePicture(const Scene& scene, bool contrast, const QString& file)
{
    testkit::ProgramFixture program;
    if (contrast) {
        askForContrast();
    }
    program.window().resize(windowSize);
    scene.show(program);
    QTest::qWait(scene.settlingTime);
    const bool saved = program.window().grabWindow().convertToFormat(QImage::Format_RGB888).save(file);
    if (!saved) {
        std::fprintf(stderr, "could not write %s\n", qPrintable(file));
    }
    return saved;
}

/// On a screen of one pixel a point: every scene, and with high contrast those that differ most. On a finer
/// one those that say most.
/// @param only the one scene to show, or empty for all
int makePictures(const QDir& folder, const QString& only)
{
    const bool fine = qGuiApp->devicePixelRatio() > 1;
    const QString scale = fine ? QStringLiteral("@%1x").arg(qGuiApp->devicePixelRatio()) : QString();
    int failures = 0;
    for (const bool dark : {false, true}) {
        QGuiApplication::setPalette(palette(dark));
        for (const Scene& scene : scenes()) {
            for (const bool contrast : {false, true}) {
                const bool wanted =
                    only.isEmpty() ? scene.typical || !(fine || contrast) : scene.name == only;
                const QString file = scene.name + QLatin1StringView(contrast ? "-contrast" : "") +
                                     QLatin1StringView(dark ? "-dark" : "") + scale +
                                     QLatin1StringView(".png");
                if (wanted && !(fine && contrast) && !makePicture(scene, contrast, folder.filePath(file))) {
                    ++failures;
                }
            }
        }
    }
    return failures;
}

} // namespace
} // namespace tessary::pictures

/// Writes a picture of every screen and state, light and dark, into the folder given. QT_SCALE_FACTOR says
/// how fine.
int main(int argc, char** argv)
{
    for (const auto& [name, value] :
         {std::pair{"QT_QPA_PLATFORM", "offscreen"}, {"QT_QUICK_BACKEND", "software"}}) {
        if (!qEnvironmentVariableIsSet(name)) {
            qputenv(name, value);
        }
    }
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 2 || !QDir().mkpath(arguments[1])) {
        std::fputs("usage: tessary_pictures FOLDER [SCENE]\n", stderr);
        return EXIT_FAILURE;
    }
    if (QFontDatabase::hasFamily(
            QStringLiteral("Inter"))) { // as a desktop would choose; else the system's own
        QGuiApplication::setFont(QFont(QStringLiteral("Inter"), 10));
    }
    const int failures = tessary::pictures::makePictures(QDir(arguments[1]), arguments.value(2));
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
