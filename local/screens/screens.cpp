#include "local/screens/Stage.h"

#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPalette>
#include <QQuickItem>

#include <cstdio>
#include <functional>
#include <vector>

namespace tessary::screens {
namespace {

const QUrl clip = QUrl::fromLocalFile(QStringLiteral("/home/ada/Videos/Harbour at dawn.mov"));
const QUrl left = QUrl::fromLocalFile(QStringLiteral("/home/ada/Videos/harbour-left.mov"));
const QUrl right = QUrl::fromLocalFile(QStringLiteral("/home/ada/Videos/harbour-right.mov"));

struct Scene
{
    QString name;
    std::function<void(Stage&)> show;
    int settlingTime = 1300; ///< in milliseconds, for its animations
};

void showUploader(Stage& stage)
{
    stage.signIn(QStringLiteral("Northern Lights Studio"));
}

void fillIn(Stage& stage)
{
    showUploader(stage);
    stage.uploader().setSelectedFile(clip);
    stage.uploader().setStatusMessage(QStringLiteral("Selected: Harbour at dawn.mov"));
    stage.uploader().setVideoName(QStringLiteral("Harbour at dawn"));
}

void upload(Stage& stage)
{
    fillIn(stage);
    stage.uploader().setIsUploading(true);
    stage.uploader().setStatusMessage(QStringLiteral("Uploading..."));
    stage.uploader().processOutput(QStringLiteral("Received Upload Sessions\n"));
    for (const char* percent : {"0.0", "14.2", "30.1", "45.5"}) {
        stage.uploader().processOutput(
            QStringLiteral(
                "\r%1 %, 0 Done, 0 Failed, 1 Pending, 0 Skipped, 1 Total, 2-sec Throughput (Mb/s): 80.25")
                .arg(QLatin1StringView(percent)));
    }
}

void separateEyes(Stage& stage, bool both)
{
    showUploader(stage);
    stage.uploader().selectFormat(QStringLiteral("Separate"));
    stage.uploader().setSelectedFileLeft(left);
    if (both) {
        stage.uploader().setSelectedFileRight(right);
        stage.uploader().setVideoName(QStringLiteral("Harbour at dawn"));
    }
}

void hover(Stage& stage)
{
    fillIn(stage);
    stage.uploader().setIsHeaderHovered(true);
    stage.uploader().setHovered(QStringLiteral("2D"), true);
}

void focusName(Stage& stage)
{
    showUploader(stage);
    Stage::wait(100);
    stage.find(QStringLiteral("formatOption:2D"))->forceActiveFocus(Qt::TabFocusReason);
}

void fail(Stage& stage)
{
    upload(stage);
    stage.uploader().setIsUploading(false);
    stage.uploader().setStatusMessage(QStringLiteral("Error: AzCopy exited with code 1"));
    stage.uploader().processOutput(QStringLiteral("Upload Error: AzCopy exited with code 1"));
}

void complete(Stage& stage)
{
    upload(stage);
    stage.uploader().setIsUploading(false);
    stage.uploader().setStatusMessage(QStringLiteral("Upload completed successfully!"));
    stage.uploader().setShowSuccessAnimation(true);
    stage.uploader().processOutput(
        QStringLiteral("Video uploaded. Library ID: 812, Name: Harbour at dawn\n"));
}

void overflow(Stage& stage)
{
    stage.signIn(QStringLiteral("W").repeated(300));
    stage.uploader().setSelectedFile(
        QUrl::fromLocalFile(QStringLiteral("/%1.mov").arg(QStringLiteral("name ").repeated(50))));
    stage.uploader().setVideoName(QStringLiteral("a very long name ").repeated(300));
    stage.uploader().setIsUploading(true);
    stage.uploader().setStatusMessage(QStringLiteral("Error: ") + QStringLiteral("long ").repeated(99));
    stage.uploader().processOutput(QStringLiteral("x").repeated(9000));
}

std::vector<Scene> scenes()
{
    const auto nothing = [](Stage& /*stage*/) {};
    return {
        {QStringLiteral("login"), nothing},
        {QStringLiteral("login-failed"), [](Stage& stage) { stage.failToSignIn(); }},
        {QStringLiteral("change-key"),
         [](Stage& stage) {
             showUploader(stage);
             stage.appManager().setEditingAPIKey(true);
         }},
        {QStringLiteral("uploader-loading"),
         [](Stage& stage) { stage.session().setApiKey(QStringLiteral("key")); }},
        {QStringLiteral("uploader-empty"), showUploader},
        {QStringLiteral("uploader-file"), fillIn},
        {QStringLiteral("uploader-hover"), hover},
        {QStringLiteral("uploader-focus"), focusName},
        {QStringLiteral("uploader-separate-one"), [](Stage& stage) { separateEyes(stage, false); }},
        {QStringLiteral("uploader-separate-both"), [](Stage& stage) { separateEyes(stage, true); }},
        {QStringLiteral("uploader-immersive"),
         [](Stage& stage) {
             fillIn(stage);
             stage.uploader().selectFormat(QStringLiteral("Apple Immersive Video (.aivu)"));
         }},
        {QStringLiteral("uploader-uploading"), upload},
        {QStringLiteral("uploader-details-hidden"),
         [](Stage& stage) {
             upload(stage);
             stage.uploader().setShowDetails(false);
         }},
        {QStringLiteral("uploader-failed"), fail},
        {QStringLiteral("uploader-completed"), complete},
        {QStringLiteral("uploader-overflow"), overflow},
    };
}

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
            Stage stage;
            scene.show(stage);
            Stage::wait(scene.settlingTime);
            const QString file = folder.filePath(scene.name + QLatin1StringView(dark ? "-dark.png" : ".png"));
            if (!stage.save(file)) {
                std::fprintf(stderr, "could not write %s\n", qPrintable(file));
                ++failures;
            }
        }
    }
    return failures;
}

} // namespace
} // namespace tessary::screens

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
        std::fputs("usage: tessary_screens FOLDER [SCENE]\n", stderr);
        return EXIT_FAILURE;
    }
    if (QFontDatabase::hasFamily(
            QStringLiteral("Inter"))) { // as a desktop would choose; else the system's own
        QGuiApplication::setFont(QFont(QStringLiteral("Inter"), 10));
    }
    const int failures = tessary::screens::makePictures(QDir(arguments[1]), arguments.value(2));
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
