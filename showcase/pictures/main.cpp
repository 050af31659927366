#include "showcase/pictures/Scenes.h"

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

/// @param only the one scene to show, or empty for all
int makePictures(const QDir& folder, const QString& only)
{
    int failures = 0;
    for (const bool dark : {false, true}) {
        QGuiApplication::setPalette(palette(dark));
        for (const Scene& scene : scenes()) {
            if (!only.isEmpty() && scene.name != only) {
                continue;
            }
            testkit::ProgramFixture program;
            program.window().resize(windowSize);
            scene.show(program);
            QTest::qWait(scene.settlingTime);
            const QString file = folder.filePath(scene.name + QLatin1StringView(dark ? "-dark.png" : ".png"));
            if (!program.window().grabWindow().convertToFormat(QImage::Format_RGB888).save(file)) {
                std::fprintf(stderr, "could not write %s\n", qPrintable(file));
                ++failures;
            }
        }
    }
    return failures;
}

} // namespace
} // namespace tessary::pictures

/// Writes a picture of every screen and state, light and dark, into the folder given.
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
